// The aperture table and the macro table.
#include "readers/gerber/GerberLines.h"
#include "readers/gerber/GerberNumbers.h"
#include "readers/gerber/GerberReader.h"
#include "readers/gerber/GerberShapes.h"

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
    if (aperture && !takePoints(aperture->numPoints())) aperture.reset();
    if (aperture && !apertureFunction_.empty() && aperture->getName().empty()) {
        aperture->setName(apertureFunction_);
    }
    state_.apertures[code] = std::move(aperture);
}

GerberReader::AperturePtr GerberReader::macroAperture(Statement text) {
    const std::size_t comma = text.find(',');
    std::map<std::string, std::string> parameters;
    if (comma != Statement::npos && comma > 0) {
        int number = 0;
        for (const Statement value : splitText(text.substr(comma + 1), 'X', true)) {
            parameters["$" + std::to_string(++number)] = value;
        }
    }
    const auto macro = state_.macros.find(std::string(text.substr(0, comma)));
    AperturePtr aperture;
    std::string problem;
    if (macro != state_.macros.end()) {
        aperture = macro->second.createOutline(parameters, macroWork_, problem);
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
    const std::vector<Statement> parts = splitText(statement, '*', true);
    const std::string name(parts[0].substr(std::min<std::size_t>(3, parts[0].size())));
    ApertureMacro macro(name, limits_);
    for (std::size_t i = 1; i < parts.size(); ++i) {
        if (parts[i] == "%") continue;
        ApertureMacro::Fields fields;
        for (const Statement field : splitText(parts[i], ','))
            fields.emplace_back(field);
        macro.addPrimitive(fields);
    }
    state_.macros[name] = std::move(macro);
}

} // namespace EDA
