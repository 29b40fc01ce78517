// The order of statements: the loop over a layer file, its blocks and its end.
#include "fabrication/layers/LayerInterpreter.h"

#include "text/Encoding.h"

namespace EDA::Fabrication {

namespace {

constexpr std::size_t pollBytes = 1 << 16;
constexpr std::size_t maxComments = 50;
constexpr double millimetresPerInch = 25.4;

} // namespace

LayerInterpreter::LayerInterpreter(Job const &job, LayerSink &sink, Notes &notes)
    : job_(job), notes_(notes), lexer_(job.bytes), apertures_(notes),
      objects_(sink, apertures_, facts_, notes) {}

LayerFacts LayerInterpreter::run() {
    objects_.setProgress(job_.progress);
    if (job_.negativeBox.isValid()) objects_.startNegative(job_.negativeBox);
    Word word;
    while (!isEnded_ && !isStopped_ && !objects_.isStopped() && mayGoOn() && lexer_.next(word))
        obey(word);
    if (!job_.rules.isProbe && !isStopped_ && !objects_.isStopped()) {
        endContour();
        while (!open_.empty())
            closeBlock();
        skipRest();
    }
    objects_.finish();
    tallies_.addTo(notes_);
    notes_.add(NoteKind::Normalised, "statements without an end of their own", lexer_.lineWithoutEnd(),
               lexer_.numWithoutEnd());
    notes_.add(NoteKind::LeftOut, "statements beyond the limit of length", 0, lexer_.numTooLong());
    facts_.attributes = attributes_.file();
    facts_.numApertures = apertures_.size();
    return std::move(facts_);
}

bool LayerInterpreter::mayGoOn() {
    const std::size_t position = lexer_.position();
    if (!job_.progress || position < nextPoll_) return true;
    nextPoll_ = position + pollBytes;
    const double part = static_cast<double>(position) / static_cast<double>(job_.bytes.size() + 1);
    job_.progress->setValue(job_.progressLow +
                            static_cast<int>(part * (job_.progressHigh - job_.progressLow)));
    isStopped_ = job_.progress->isCancelled();
    return !isStopped_;
}

// What follows the end of the program is not obeyed. A file without that end may have lost its last part.
void LayerInterpreter::skipRest() {
    if (!isEnded_) {
        if (facts_.numObjects() > 0) notes_.add(NoteKind::Guessed, "files without an end, taken as whole");
        return;
    }
    std::size_t count = 0;
    std::size_t first = 0;
    Word word;
    std::string_view text;
    while (lexer_.next(word)) {
        if (word.text[0] == 'M' || isComment(word.text, text)) continue;
        if (count++ == 0) first = word.line;
    }
    notes_.add(NoteKind::LeftOut, "statements after the end of the program", first, count);
}

void LayerInterpreter::obey(Word const &word) {
    line_ = word.line;
    objects_.setLine(line_);
    std::string_view text;
    if (isComment(word.text, text))
        comment(text);
    else if (word.isCut && word.text[0] != 'M' && word.text[0] != 'm')
        notes_.add(NoteKind::LeftOut, "statements cut off by the end of the file", line_);
    else if (isExtended(word.text))
        obeyCommand(word.text);
    else
        obeyCodes(word.text);
}

// Attributes may hide in comments, from readers that know none.
void LayerInterpreter::comment(std::string_view text) {
    constexpr std::string_view mark = "#@!";
    text = trimmed(text);
    if (text.substr(0, mark.size()) == mark) {
        const std::string_view command = trimmed(text.substr(mark.size()));
        if (command.size() >= 2 && command[0] == 'T') obeyCommand(command);
    } else if (facts_.comments.size() < maxComments) {
        facts_.comments.push_back(isValidUtf8(text) ? std::string(text) : latin1ToUtf8(text));
    }
}

LayerSurvey const &LayerInterpreter::survey() {
    if (!survey_) survey_ = surveyOf(job_.bytes);
    return *survey_;
}

void LayerInterpreter::setUnit(Unit unit) {
    const double millimetres = unit == Unit::Inch ? millimetresPerInch : 1.0;
    if (facts_.unit == Unit::Unknown) facts_.unit = unit;
    if (unit_ != 0.0 && unit_ != millimetres) tallies_.count(Tally::UnitChanges, line_);
    unit_ = millimetres;
    isScaleReady_ = false;
}

// A unit that is named late in the file is that of what stands before it, too.
double LayerInterpreter::unit() {
    if (unit_ != 0.0) return unit_;
    Unit unit = job_.rules.unit;
    if (survey().unit != Unit::Unknown) {
        unit = survey().unit;
    } else {
        if (unit == Unit::Unknown)
            unit = guessedUnit(survey(), facts_.hasFormat ? format_ : guessedFormat(survey(), unit));
        notes_.add(NoteKind::Guessed,
                   unit == Unit::Inch ? "files without a unit, taken as inches"
                                      : "files without a unit, taken as millimetres",
                   line_);
    }
    unit_ = unit == Unit::Inch ? millimetresPerInch : 1.0;
    return unit_;
}

void LayerInterpreter::prepareNumbers() {
    const double millimetres = unit();
    if (!facts_.hasFormat) {
        const bool isIncremental = format_.isIncremental;
        format_ = guessedFormat(survey(), millimetres == 1.0 ? Unit::Millimetre : Unit::Inch);
        format_.isIncremental = isIncremental;
        notes_.add(NoteKind::Guessed,
                   "files without a number format, taken as " + std::to_string(format_.integerDigits[0]) +
                       "." + std::to_string(format_.decimalDigits[0]) +
                       (format_.omitsTrailing ? " without zeros at the end" : " without zeros in front"),
                   line_);
        facts_.hasFormat = false;
    }
    scale_.set(format_, millimetres);
    isScaleReady_ = true;
}

void LayerInterpreter::applyNet() {
    if (isNetReady_) return;
    objects_.setNet(attributes_.net(), attributes_.pin());
    isNetReady_ = true;
}

void LayerInterpreter::closeRepeat() {
    if (!open_.empty() && open_.back().isRepeat) closeBlock();
}

void LayerInterpreter::closeBlock() {
    const OpenBlock block = open_.back();
    open_.pop_back();
    std::shared_ptr<Recording const> recording = objects_.closeRecording();
    if (block.isRepeat) {
        // A repeat has no net of its own that objects without one could take.
        objects_.setNet({}, {});
        isNetReady_ = false;
        objects_.place(recording, {}, {}, true, block.repeats);
        return;
    }
    auto aperture = std::make_shared<Aperture>();
    aperture->block = std::move(recording);
    aperture->line = line_;
    apertures_.define(block.code, std::move(aperture));
    if (aperture_ == block.code) select(block.code);
}

} // namespace EDA::Fabrication
