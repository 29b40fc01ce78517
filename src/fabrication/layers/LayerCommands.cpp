// Extended commands of layer files.
#include "fabrication/layers/LayerInterpreter.h"
#include "fabrication/Limits.h"
#include "text/Encoding.h"

#include <algorithm>
#include <cmath>

namespace EDA::Fabrication {

namespace {

constexpr double leastScale = 1e-6;
constexpr double mostScale = 1e6;

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// Numbers behind letters: "A0.5B-1". What is not given stays as it is. False if anything else stands there.
template <std::size_t count>
bool takeNamed(std::string_view text, const char (&letters)[count], double *values) {
    while (!(text = trimmed(text)).empty()) {
        const char *found = std::find(letters, letters + count - 1, upper(text[0]));
        text.remove_prefix(1);
        if (found == letters + count - 1 || !takeDecimal(text, values[found - letters])) return false;
    }
    return true;
}

bool isGoodScale(double scale) { return scale >= leastScale && scale <= mostScale; }

bool takesModifiers(std::string_view text, std::vector<double> &modifiers) {
    while (!(text = trimmed(text)).empty()) {
        double value = 0.0;
        if (!takeDecimal(text, value)) return false;
        modifiers.push_back(value);
        text = trimmed(text);
        if (text.empty()) return true;
        if (upper(text[0]) != 'X' && text[0] != ',') return false;
        text.remove_prefix(1);
    }
    return true;
}

int wholeFrom(double value) {
    return static_cast<int>(std::clamp(std::floor(value), 1.0, 2.0 * static_cast<double>(Limits::repeats)));
}

} // namespace

const LayerInterpreter::CommandEntry LayerInterpreter::commands[] = {
    {"FS", &LayerInterpreter::formatCommand},
    {"MO", &LayerInterpreter::unitCommand},
    {"AD", &LayerInterpreter::apertureCommand},
    {"AM", &LayerInterpreter::macroCommand},
    {"AB", &LayerInterpreter::blockCommand},
    {"SR", &LayerInterpreter::repeatCommand},
    {"LP", &LayerInterpreter::polarityCommand},
    {"LM", &LayerInterpreter::mirrorCommand},
    {"LR", &LayerInterpreter::rotateCommand},
    {"LS", &LayerInterpreter::scaleCommand},
    {"TF", &LayerInterpreter::fileAttributeCommand},
    {"TA", &LayerInterpreter::apertureAttributeCommand},
    {"TO", &LayerInterpreter::objectAttributeCommand},
    {"TD", &LayerInterpreter::deleteAttributeCommand},
    {"MI", &LayerInterpreter::imageMirrorCommand},
    {"OF", &LayerInterpreter::imageOffsetCommand},
    {"SF", &LayerInterpreter::imageScaleCommand},
    {"AS", &LayerInterpreter::imageAxesCommand},
    {"IR", &LayerInterpreter::imageRotationCommand},
    {"IP", &LayerInterpreter::imagePolarityCommand},
    {"IN", &LayerInterpreter::nameCommand},
    {"LN", &LayerInterpreter::nameCommand},
    {"IC", &LayerInterpreter::ignoredCommand}, // the code of the text: everything is read the same way
    {"PF", &LayerInterpreter::ignoredCommand}, // the film to plot on
};

// Includes ("IF") are among the commands without an entry: no other file is ever opened.
void LayerInterpreter::obeyCommand(std::string_view text) {
    const char letters[] = {upper(text[0]), upper(text[1])};
    const std::string_view name(letters, 2);
    for (CommandEntry const &entry : commands) {
        if (entry.letters == name) return (this->*entry.command)(text.substr(2));
    }
    tallies_.countUnknown(std::string(name), line_);
}

void LayerInterpreter::formatCommand(std::string_view text) {
    if (!parseFormat(text, format_)) return badCommand();
    if (!facts_.hasFormat) {
        facts_.integerDigits = format_.integerDigits[0];
        facts_.decimalDigits = format_.decimalDigits[0];
    }
    facts_.hasFormat = true;
    isScaleReady_ = false;
}

void LayerInterpreter::unitCommand(std::string_view text) {
    text = trimmed(text);
    if (!text.empty() && upper(text[0]) == 'I')
        setUnit(Unit::Inch);
    else if (!text.empty() && upper(text[0]) == 'M')
        setUnit(Unit::Millimetre);
    else
        badCommand();
}

// "D10C,0.5X0.2"
void LayerInterpreter::apertureCommand(std::string_view text) {
    text = trimmed(text);
    if (!text.empty() && upper(text[0]) == 'D') text.remove_prefix(1);
    int code = 0;
    if (!takeInteger(text, code)) return badCommand();
    auto aperture = std::make_shared<Aperture>();
    const std::size_t comma = text.find(',');
    aperture->name = std::string(trimmed(text.substr(0, comma)));
    if (aperture->name.empty()) return badCommand();
    if (comma != std::string_view::npos && !takesModifiers(text.substr(comma + 1), aperture->modifiers))
        badCommand();
    aperture->function = attributes_.apertureFunction();
    aperture->millimetres = unit();
    aperture->line = line_;
    apertures_.define(code, std::move(aperture));
    if (aperture_ == code) select(code);
}

// All statements up to the end of the block; where that is forgotten, up to one that is no primitive.
void LayerInterpreter::macroCommand(std::string_view text) {
    Macro macro;
    macro.name = std::string(trimmed(text));
    Word word;
    while (!lexer_.isAtBlockEdge()) {
        const char first = lexer_.peek();
        if (first != '$' && (first < '0' || first > '9')) break;
        if (!lexer_.next(word)) break;
        macro.statements.emplace_back(trimmed(word.text));
    }
    if (macro.name.empty()) return badCommand();
    apertures_.define(std::move(macro));
}

void LayerInterpreter::blockCommand(std::string_view text) {
    endContour();
    text = trimmed(text);
    if (text.empty()) {
        closeRepeat();
        return open_.empty() ? badCommand() : closeBlock();
    }
    if (upper(text[0]) == 'D') text.remove_prefix(1);
    int code = 0;
    if (!takeInteger(text, code)) return badCommand();
    if (open_.size() >= Limits::blockDepth) {
        notes_.add(NoteKind::LeftOut, "blocks beyond the limit of depth", line_);
        return;
    }
    objects_.openRecording();
    open_.push_back({false, code, {}});
}

// A repeat ends with the next one: they do not stand in each other.
void LayerInterpreter::repeatCommand(std::string_view text) {
    endContour();
    closeRepeat();
    double values[] = {1.0, 1.0, 0.0, 0.0};
    if (!takeNamed(text, "XYIJ", values)) return badCommand();
    OpenBlock block;
    block.isRepeat = true;
    block.repeats = {wholeFrom(values[0]), wholeFrom(values[1]), values[2] * unit(), values[3] * unit()};
    const auto columns = static_cast<std::size_t>(block.repeats.columns);
    const auto rows = static_cast<std::size_t>(block.repeats.rows);
    if (columns * rows == 1) return;
    if (columns * rows > Limits::repeats || open_.size() >= Limits::blockDepth) {
        notes_.add(NoteKind::LeftOut, "steps and repeats beyond the limit, drawn once", line_);
        return;
    }
    objects_.openRecording();
    open_.push_back(block);
}

void LayerInterpreter::polarityCommand(std::string_view text) {
    text = trimmed(text);
    const char letter = text.empty() ? '\0' : upper(text[0]);
    if (letter != 'D' && letter != 'C') return badCommand();
    objects_.setDark(letter == 'D');
}

void LayerInterpreter::mirrorCommand(std::string_view text) {
    transform_.mirrorX = text.find_first_of("Xx") != std::string_view::npos;
    transform_.mirrorY = text.find_first_of("Yy") != std::string_view::npos;
    objects_.setTransform(transform_);
}

void LayerInterpreter::rotateCommand(std::string_view text) {
    double degrees = 0.0;
    if (!parseDecimal(text, degrees)) return badCommand();
    transform_.rotation = degrees;
    objects_.setTransform(transform_);
}

void LayerInterpreter::scaleCommand(std::string_view text) {
    double scale = 1.0;
    if (!parseDecimal(text, scale) || !isGoodScale(scale)) return badCommand();
    transform_.scaleX = transform_.scaleY = scale;
    objects_.setTransform(transform_);
}

void LayerInterpreter::fileAttributeCommand(std::string_view text) { attributes_.setFile(text); }

void LayerInterpreter::apertureAttributeCommand(std::string_view text) { attributes_.setAperture(text); }

void LayerInterpreter::objectAttributeCommand(std::string_view text) {
    attributes_.setObject(text);
    isNetReady_ = false;
}

void LayerInterpreter::deleteAttributeCommand(std::string_view text) {
    attributes_.remove(text);
    isNetReady_ = false;
}

void LayerInterpreter::imageMirrorCommand(std::string_view text) {
    double values[] = {0.0, 0.0};
    if (!takeNamed(text, "AB", values)) return badCommand();
    image_.mirrorsA = values[0] != 0.0;
    image_.mirrorsB = values[1] != 0.0;
    objects_.setImage(image_.placement());
}

void LayerInterpreter::imageOffsetCommand(std::string_view text) {
    double values[] = {0.0, 0.0};
    if (!takeNamed(text, "AB", values)) return badCommand();
    image_.offsetA = values[0] * unit();
    image_.offsetB = values[1] * unit();
    objects_.setImage(image_.placement());
}

void LayerInterpreter::imageScaleCommand(std::string_view text) {
    double values[] = {1.0, 1.0};
    if (!takeNamed(text, "AB", values) || !isGoodScale(values[0]) || !isGoodScale(values[1]))
        return badCommand();
    image_.scaleA = values[0];
    image_.scaleB = values[1];
    objects_.setImage(image_.placement());
}

// "AXBY" or "AYBX"
void LayerInterpreter::imageAxesCommand(std::string_view text) {
    std::string axes;
    for (const char c : text)
        if (static_cast<unsigned char>(c) > ' ') axes += upper(c);
    if (axes != "AXBY" && axes != "AYBX") return badCommand();
    image_.swapsAxes = axes == "AYBX";
    objects_.setImage(image_.placement());
}

void LayerInterpreter::imageRotationCommand(std::string_view text) {
    double degrees = 0.0;
    if (!parseDecimal(text, degrees)) return badCommand();
    image_.rotation = degrees;
    objects_.setImage(image_.placement());
}

void LayerInterpreter::imagePolarityCommand(std::string_view text) {
    text = trimmed(text);
    const char letter = text.empty() ? '\0' : upper(text[0]);
    if (letter != 'N' && letter != 'P') return badCommand();
    facts_.isNegative = letter == 'N';
}

void LayerInterpreter::nameCommand(std::string_view text) {
    constexpr std::size_t maxNames = 50;
    text = trimmed(text);
    if (text.empty() || facts_.names.size() >= maxNames) return;
    facts_.names.push_back(isValidUtf8(text) ? std::string(text) : latin1ToUtf8(text));
}

void LayerInterpreter::ignoredCommand(std::string_view) {}

} // namespace EDA::Fabrication
