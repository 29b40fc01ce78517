// Reading layer files: their text, and negative images.
#include "fabrication/layers/LayerFile.h"

#include "fabrication/layers/LayerInterpreter.h"
#include "text/Encoding.h"

namespace EDA::Fabrication {

namespace {

constexpr double negativeMargin = 1.0;

// Where only the extent of what is drawn matters.
class NoSink : public LayerSink {
public:
    void flash(Shape const &, Point const &, bool) override {}
    void stroke(Shape const &, Point const &, Segment const &, bool) override {}
    void region(Path const &, bool) override {}
};

bool isUtf16(std::string_view bytes) {
    const std::string_view mark = bytes.substr(0, 2);
    return mark == "\xFF\xFE" || mark == "\xFE\xFF";
}

// Whether a command might ask for a negative image, however it is spelled.
bool mayBeNegative(std::string_view bytes) {
    for (std::size_t at = bytes.find_first_of("Pp"); at != std::string_view::npos;
         at = bytes.find_first_of("Pp", at + 1)) {
        const bool isCommand = at > 0 && (bytes[at - 1] == 'I' || bytes[at - 1] == 'i');
        if (isCommand && bytes.substr(at + 1, 3) != "POS") return true;
    }
    return false;
}

// A negative image is drawn on a box that is known only when all of it has been seen.
Geometry::Bound2D negativeBoxOf(LayerInterpreter::Job job) {
    if (job.rules.isProbe || !mayBeNegative(job.bytes)) return {};
    NoSink sink;
    Notes notes;
    job.progressHigh = 50;
    const LayerFacts facts = LayerInterpreter(job, sink, notes).run();
    Geometry::Bound2D const &bound = facts.bound;
    if (!facts.isNegative || facts.numObjects() == 0) return {};
    return {bound.getXLow() - negativeMargin, bound.getYLow() - negativeMargin,
            bound.getXHigh() + negativeMargin, bound.getYHigh() + negativeMargin};
}

} // namespace

std::vector<std::string> const &LayerFacts::attribute(std::string const &name) const {
    static const std::vector<std::string> none;
    const auto found = attributes.find(name);
    return found == attributes.end() ? none : found->second;
}

LayerFacts readLayerFile(std::string_view bytes, LayerRules const &rules, LayerSink &sink, Notes &notes,
                         Tools::ToolProgress *progress) {
    std::string decoded;
    if (isUtf16(bytes)) {
        decoded = decodedToUtf8(std::string(bytes));
        bytes = decoded;
    }
    LayerInterpreter::Job job;
    job.bytes = bytes;
    job.rules = rules;
    job.progress = progress;
    if (progress) progress->setMaximum(job.progressHigh);
    job.negativeBox = negativeBoxOf(job);
    if (job.negativeBox.isValid()) job.progressLow = job.progressHigh / 2;
    return LayerInterpreter(job, sink, notes).run();
}

} // namespace EDA::Fabrication
