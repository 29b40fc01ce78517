// The aperture table and the macro table.
#include "readers/gerber/GerberLines.h"
#include "readers/gerber/GerberNumbers.h"
#include "readers/gerber/GerberReader.h"
#include "readers/gerber/GerberShapes.h"
#include "readers/gerber/OutlineSize.h"

#include <algorithm>

namespace EDA {

namespace {

using Fields = std::vector<std::string_view>;
using Shapes = GerberShapes;

// "C,", "R,", "O," or "P," with the fields that its shape takes, and a hole of one or two more.
struct Template {
    char letter;
    std::size_t minFields;
    std::size_t holeField; // the first field of the hole
    void (*build)(EDAOutline *outline, const Fields &fields);
};

const Template templates[] = {
    {'C', 1, 1,
     [](EDAOutline *outline, const Fields &f) {
         Shapes::setupCircularOutline(outline, gerberDouble(f[0]), 0.0, 0.0);
     }},
    {'R', 2, 2,
     [](EDAOutline *outline, const Fields &f) {
         Shapes::setupRectangularOutline(outline, gerberDouble(f[0]), gerberDouble(f[1]), 0.0, 0.0);
     }},
    {'O', 2, 2,
     [](EDAOutline *outline, const Fields &f) {
         Shapes::setupObroundOutline(outline, gerberDouble(f[0]), gerberDouble(f[1]));
     }},
    {'P', 2, 3,
     [](EDAOutline *outline, const Fields &f) {
         const double rotation = f.size() > 2 ? gerberDouble(f[2]) : 0.0;
         Shapes::setupPolygonOutline(outline, gerberDouble(f[0]), gerberInt(f[1]), rotation, 0.0, 0.0);
     }},
};

const Template *findTemplate(std::string_view text) {
    if (text.size() < 2 || text[1] != ',') return nullptr;
    const auto found = std::find_if(std::begin(templates), std::end(templates),
                                    [text](const Template &each) { return each.letter == text[0]; });
    return found != std::end(templates) ? found : nullptr;
}

void addHole(EDAOutline &outline, const Fields &fields, std::size_t first) {
    const std::size_t count = fields.size() - std::min(first, fields.size());
    if (count != 1 && count != 2) return;
    EDAOutline hole(true);
    const double size = gerberDouble(fields[first]);
    if (count == 1) {
        Shapes::setupCircularOutline(&hole, size, 0.0, 0.0);
    } else {
        Shapes::setupRectangularOutline(&hole, size, gerberDouble(fields[first + 1]), 0.0, 0.0);
    }
    outline.addInternalOutline(hole);
}

int numVertices(const Template &shape, const Fields &fields) {
    return shape.letter == 'P' && fields.size() > 1 ? gerberInt(fields[1]) : 0;
}

// Null where there are too few fields.
std::shared_ptr<EDAOutline> standardAperture(const Template &shape, const Fields &fields) {
    if (fields.size() < shape.minFields) return nullptr;
    auto outline = std::make_shared<EDAOutline>(false);
    shape.build(outline.get(), fields);
    addHole(*outline, fields, shape.holeField);
    return outline;
}

} // namespace

// The current aperture keeps its shape, also when its own code is defined anew.
void GerberReader::defineAperture(Statement statement) {
    const Statement text = statement.substr(std::min<std::size_t>(4, statement.size()));
    std::size_t digits = std::min<std::size_t>(1, text.size());
    while (digits < text.size() && text[digits] >= '0' && text[digits] <= '9')
        ++digits;
    const int code = gerberInt(text.substr(0, digits));
    Statement shape = text.substr(digits);
    shape = shape.substr(0, std::min(shape.find('*'), shape.size()));

    AperturePtr aperture;
    if (const Template *const standard = findTemplate(shape)) {
        const Fields fields = splitText(shape.substr(2), 'X', true);
        if (numVertices(*standard, fields) <= limits_.vertices) {
            aperture = standardAperture(*standard, fields);
        } else {
            addMessage("Aperture of more than " + std::to_string(limits_.vertices) +
                       " vertices: " + std::string(shape));
        }
    } else if (!shape.empty()) {
        aperture = macroAperture(shape);
    }
    // Apertures count as points of the file do, so that their number has a bound, too.
    if (aperture && !takePoints(countPoints(*aperture))) aperture.reset();
    if (aperture && !apertureFunction_.empty() && aperture->getName().empty()) {
        aperture->setName(apertureFunction_);
    }
    state_.apertures[code] = std::move(aperture);
}

GerberReader::AperturePtr GerberReader::macroAperture(Statement text) {
    const std::size_t comma = text.find(',');
    std::map<std::string, std::string> parameters;
    if (comma != Statement::npos && comma > 0) {
        const Statement values = text.substr(comma + 1);
        std::size_t number = 0;
        // One beyond the limit shows that there are too many.
        for (std::size_t begin = 0; begin <= values.size() && number <= limits_.parameters;) {
            const std::size_t end = std::min(values.find('X', begin), values.size());
            parameters["$" + std::to_string(++number)] = values.substr(begin, end - begin);
            begin = end + 1;
        }
    }
    const auto macro = state_.macros.find(std::string(text.substr(0, comma)));
    AperturePtr aperture;
    std::string problem;
    if (macro != state_.macros.end()) {
        WorkBudget budget = macroWork_.share();
        aperture = macro->second.createOutline(parameters, budget, problem);
        macroWork_.take(budget);
    }
    if (!aperture) addMessage("Failed to find aperture macro: " + std::string(text));
    if (!problem.empty()) addMessage("Aperture macro " + macro->first + ": " + problem + ".");
    return aperture;
}

void GerberReader::selectAperture(Statement statement) {
    const std::size_t letter = statement.find('D');
    const int code = letter == Statement::npos ? 0 : leadingInt(statement.substr(letter + 1));
    state_.currentAperture = state_.apertures[code];
}

void GerberReader::setupApertureMacro(Statement statement) {
    std::size_t end = std::min(statement.find('*'), statement.size());
    const Statement head = statement.substr(0, end);
    const std::string name(head.substr(std::min<std::size_t>(3, head.size())));
    ApertureMacro macro(name, limits_);
    // What is beyond the limits is not even kept: the macro will be refused.
    while (end < statement.size() && !macro.isTooLong()) {
        const std::size_t begin = end + 1;
        end = std::min(statement.find('*', begin), statement.size());
        const Statement part = statement.substr(begin, end - begin);
        if (part == "%") continue;
        if (!macro.takeFields(static_cast<std::size_t>(std::count(part.begin(), part.end(), ',')) + 1)) break;
        ApertureMacro::Fields fields;
        for (const Statement field : splitText(part, ','))
            fields.emplace_back(field);
        macro.addPrimitive(fields);
    }
    state_.macros[name] = std::move(macro);
}

} // namespace EDA
