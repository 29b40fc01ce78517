// The table of statements of both formats.
#include "readers/gerber/GerberLines.h"
#include "readers/gerber/GerberReader.h"

#include <array>

namespace EDA {

// A statement that starts (or ends) with one of these texts, with case, is dealt with so.
struct GerberReader::Rule {
    enum class When { Always, InDrillMode, OutsideDrillMode };
    enum class Where { Start, End };
    using Action = void (*)(GerberReader &, Statement);

    std::array<std::string_view, 7> texts;
    Action action;
    When when = When::Always;
    Where where = Where::Start;

    bool matches(Statement statement, bool drillMode) const {
        if (when != When::Always && (when == When::InDrillMode) != drillMode) return false;
        if (statement.empty()) return false;
        for (const std::string_view text : texts) {
            if (text.empty()) return false;
            // Nearly all are told apart by a character.
            const bool isStart = where == Where::Start;
            if ((isStart ? statement.front() : statement.back()) != (isStart ? text.front() : text.back()))
                continue;
            if (isStart ? startsWith(statement, text) : endsWith(statement, text)) return true;
        }
        return false;
    }
};

// The first that matches decides, so the order is part of the format: "M00" means another thing in a drill
// file, and any "T..." that nothing before it takes makes the rest of the file a drill file.
void GerberReader::handleStatement(Statement statement) {
    constexpr auto inDrillMode = Rule::When::InDrillMode;
    constexpr auto outsideDrillMode = Rule::When::OutsideDrillMode;
    constexpr auto end = Rule::Where::End;
    constexpr auto always = Rule::When::Always;
    static const auto ignore = [](GerberReader &, Statement) {};
    static const Rule rules[] = {
        {{"G04"}, ignore},
        {{"%FS"}, [](GerberReader &r, Statement s) { r.extractFormatSpecification(s); }},
        {{"%TF"}, [](GerberReader &r, Statement s) { r.extractFileAttribute(s); }},
        {{"%MO"}, [](GerberReader &r, Statement s) { r.extractUnitsSpecification(s); }},
        {{"%LP"}, [](GerberReader &r, Statement s) { r.startNewLevel(s); }},
        {{"%AD"}, [](GerberReader &r, Statement s) { r.defineAperture(s); }},
        {{"%SR"}, [](GerberReader &r, Statement s) { r.definePattern(s); }},
        {{"G01", "G1X", "G1Y"},
         [](GerberReader &r, Statement s) { r.interpolate(Interpolation::Linear, s); }},
        {{"G02", "G2X", "G2Y"},
         [](GerberReader &r, Statement s) { r.interpolate(Interpolation::Clockwise, s); }},
        {{"G03", "G3X", "G3Y"},
         [](GerberReader &r, Statement s) { r.interpolate(Interpolation::Anticlockwise, s); }},
        {{"G36"}, [](GerberReader &r, Statement) { r.startRegion(); }},
        {{"G37"}, [](GerberReader &r, Statement) { r.endRegion(); }},
        {{"G74"}, [](GerberReader &r, Statement) { r.state_.quadrants = Quadrants::Single; }},
        {{"G75"}, [](GerberReader &r, Statement) { r.state_.quadrants = Quadrants::Multi; }},
        {{"D01", "D1"}, [](GerberReader &r, Statement s) { r.drawPlain(s); }, always, end},
        {{"D02", "D2"}, [](GerberReader &r, Statement s) { r.move(s); }, always, end},
        {{"D03", "D3"}, [](GerberReader &r, Statement s) { r.flash(s); }, always, end},
        {{"X", "Y"}, [](GerberReader &r, Statement s) { r.addVia(s); }, inDrillMode},
        {{"X", "Y"}, [](GerberReader &r, Statement s) { r.repeatLastOperation(s); }},
        {{"D", "G54"}, [](GerberReader &r, Statement s) { r.selectAperture(s); }},
        {{"%AM"}, [](GerberReader &r, Statement s) { r.setupApertureMacro(s); }},
        {{"%TA"}, [](GerberReader &r, Statement s) { r.extractApertureAttribute(s); }},
        {{"%TD", "%DR", "%AV", "%IP"}, ignore},
        // Intended: coordinates are taken as absolute and in the units of "%MO", whatever these say.
        {{"G55", "G70", "G71", "G90", "G91", "M01"}, ignore},
        {{"G81", "G80"}, ignore},
        {{"M00"}, ignore, outsideDrillMode},
        {{"%AS", "%IN", "%IR", "%MI", "%OF", "%SF", "%LN"}, ignore},
        {{"%ICAS*%"}, ignore},
        // Intended: the end of the program is not the end of the reading. What follows it is obeyed, as it
        // always was.
        {{"M02", "M2"}, ignore},
        {{"M30"}, ignore, inDrillMode},
        {{"M48"}, [](GerberReader &r, Statement) { r.state_.drillMode = true; }},
        {{"%"}, ignore, inDrillMode},
        {{";"}, [](GerberReader &r, Statement s) { r.parseDrillHeaderData(s.substr(1)); }, inDrillMode},
        {{"INCH", "M72"}, [](GerberReader &r, Statement s) { r.setDrillUnits(s, "in"); }, inDrillMode},
        {{"METRIC", "M71"}, [](GerberReader &r, Statement s) { r.setDrillUnits(s, "mm"); }, inDrillMode},
        {{"M00"}, [](GerberReader &r, Statement) { r.selectNextTool(); }, inDrillMode},
        {{"R"}, [](GerberReader &r, Statement s) { r.repeatVia(s); }, inDrillMode},
        {{"T"}, [](GerberReader &r, Statement s) { r.setDrillTool(s); }},
        {{"VER", "FMAT", "ICI", "ATC"}, ignore},
    };
    for (const Rule &rule : rules) {
        if (rule.matches(statement, state_.drillMode)) return rule.action(*this, statement);
    }
    addUnhandled(statement);
}

void GerberReader::interpolate(Interpolation interpolation, Statement statement) {
    state_.interpolation = interpolation;
    if (endsWith(statement, "D01") || endsWith(statement, "D1")) {
        draw(statement);
    } else if (endsWith(statement, "D02") || endsWith(statement, "D2")) {
        move(statement);
    } else if (endsWith(statement, "D03") || endsWith(statement, "D3")) {
        flash(statement);
    } else {
        repeatLastOperation(statement);
    }
}

// Intended: once a file has named a quadrant mode, a draw without a G code of its own is a straight line,
// whatever came before it; in a file that named none the interpolation lasts.
void GerberReader::drawPlain(Statement statement) {
    if (state_.quadrants != Quadrants::NotSaid) state_.interpolation = Interpolation::Linear;
    draw(statement);
}

// Intended, also for a "G01" that stands alone: after a flash it flashes again, at the current point.
void GerberReader::repeatLastOperation(Statement statement) {
    switch (state_.lastOperation) {
    case Operation::Draw:
        return draw(statement);
    case Operation::Flash:
        return flash(statement);
    case Operation::Move:
        return move(statement);
    }
}

// The aperture has to be chosen anew after a change of polarity: drawing without one draws nothing.
void GerberReader::startNewLevel(Statement statement) {
    state_.currentAperture.reset();
    state_.darkPolarity = statement.find("LPD") != Statement::npos;
}

void GerberReader::startRegion() {
    state_.inRegion = true;
    state_.regionOutline.clear();
    state_.regionOutline.setHole(false); // of a clear region before
}

// The outline stays: a region that begins anew clears it.
void GerberReader::endRegion() {
    state_.inRegion = false;
    addOutline(state_.regionOutline, false);
}

// "TZ" says that trailing zeros are kept, so a short number lacks leading ones.
void GerberReader::setDrillUnits(Statement statement, const char *units) {
    board_.setUnits(units);
    const bool keepsTrailing = statement.find("TZ") != Statement::npos;
    const bool keepsLeading = statement.find("LZ") != Statement::npos;
    state_.leadingZerosOmitted = keepsTrailing || !keepsLeading;
}

} // namespace EDA
