// Counts what the reader of Gerber and drill files passes over.
#include "GerberLosses.h"

#include "GerberStatementWalk.h"
#include "readers/gerber/GerberLines.h"
#include "readers/gerber/GerberNumbers.h"
#include "text/Text.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

namespace EDATool {

namespace {

using EDA::endsWith;
using EDA::splitText;
using EDA::startsWith;
using Text = std::string_view;

enum Kind {
    LoneArcCode,
    PolarityDropsAperture,
    Mirror,
    Offset,
    Scale,
    Rotation,
    AxisSwap,
    NegativeImage,
    Incremental,
    UnitsCode,
    NoUnits,
    PlusSign,
    DecimalPoint,
    Slot,
    Route,
    ToolWithoutSize,
    NoTool,
    ZerosLost,
    LonePercent,
    TurnedPolygon,
    TurnedRing,
    RingBesideOrigin,
    numKinds
};

struct KindText {
    const char *what;
    const char *meaning;
};

// In the order of Kind.
constexpr KindText kindTexts[numKinds] = {
    {"arcs that take their G02 or G03 from an earlier line, in a file with G74 or G75",
     "they become straight lines"},
    {"strokes and flashes after a change of polarity that don't select an aperture anew",
     "they are left out, so copper or clearance is missing"},
    {"%MI, a mirrored image", "the layer is read unmirrored"},
    {"%OF, an image with an offset", "the layer is read without the offset"},
    {"%SF, a scaled image", "the layer is read unscaled"},
    {"%IR, a turned image", "the layer is read unturned"},
    {"%AS, an image with its axes swapped", "the layer is read with the axes as they are"},
    {"%IPNEG, a negative image", "the layer is read as a positive, so copper and clearance change places"},
    {"incremental coordinates (G91, %FS with I, ICI,ON)", "they are read as absolute, so shapes lie wrong"},
    {"G70 or G71 against the units of %MO", "the units of %MO hold, so lengths may be wrong"},
    {"G70 or G71 in a file without %MO",
     "the code has no effect; lengths are in the units that other files name, or else in millimetres"},
    {"coordinates with a plus sign", "each such number is read as 0, so these points lie wrong"},
    {"coordinates with a decimal point", "each such number is read as 0, so these holes lie wrong"},
    {"slots (G85)", "each becomes one hole at a wrong place"},
    {"routes (G00 to G03, M15)", "nothing is cut, and plain coordinates between them become holes"},
    {"holes by a tool without a size", "they get the diameter 0"},
    {"holes before the first tool", "they get the diameter 0.35 in whatever units"},
    {"a units statement that doesn't repeat LZ",
     "short numbers behind it are filled up in front, so holes may lie wrong"},
    {"a \"%\" on a line of its own without M48 behind it",
     "the lines up to the next \"%\" are passed over, so tools and holes are missing"},
    {"turned polygons (5) in aperture macros", "they are turned by twice their angle"},
    {"turned moires and thermals (6, 7) in aperture macros",
     "only their first part is turned, so it may cover another and copper is missing"},
    {"moires and thermals (6, 7) in aperture macros with a fractional y of the centre", "the y is read as 0"},
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isExtendedName(Text text) {
    static constexpr Text names[] = {"FS", "MO", "TF", "TA", "TO", "TD", "AD", "AM", "AB", "LP", "LM", "LR",
                                     "LS", "LN", "IN", "IP", "IR", "IC", "OF", "SF", "MI", "AS", "SR", "TJ"};
    return std::any_of(std::begin(names), std::end(names), [&](Text name) { return startsWith(text, name); });
}

// The numbers behind the letters of an image statement: "%OFA1.5B0*%".
std::array<double, 2> lettersOf(Text statement, double fallback) {
    std::array<double, 2> values{fallback, fallback};
    for (const std::size_t index : {0u, 1u}) {
        const std::size_t at = statement.find(index == 0 ? 'A' : 'B', 3);
        if (at != Text::npos) values[index] = EDA::leadingDouble(statement.substr(at + 1));
    }
    return values;
}

bool isTransform(Text statement, double identity) {
    const std::array<double, 2> values = lettersOf(statement, identity);
    return values[0] != identity || values[1] != identity;
}

Text upTo(Text text, char end) { return text.substr(0, std::min(text.find(end), text.size())); }

class Look {
public:
    GerberFacts facts;

    void take(const GerberStatement &statement) {
        line_ = statement.line;
        const Text text = statement.text;
        if (statement.swallows) count(LonePercent);
        if (startsWith(text, "G04") || startsWith(text, ";")) {
            takeComment(text);
        } else if (statement.isDrill) {
            facts.isDrill = true;
            const bool isTool = text.size() > 1 && text.front() == 'T' && isDigit(text[1]);
            if (isTool || startsWith(text, "M48")) facts.isGerberText = true;
            takeDrill(text);
            return;
        } else if (text.front() == '%') {
            takeExtended(text);
        } else {
            takePlain(text);
        }
    }

    void finish() {
        const Kind unitsKind = facts.units.empty() ? NoUnits : UnitsCode;
        const bool isInch = facts.units == "in";
        if (facts.units.empty() && !facts.isDrill) {
            addAs(unitsKind, inchCodes_);
            addAs(unitsKind, metricCodes_);
        } else if (!facts.isDrill) {
            addAs(unitsKind, isInch ? metricCodes_ : inchCodes_);
        }
        for (std::size_t kind = 0; kind < numKinds; ++kind) {
            const Count &found = counts_[kind];
            if (found.count == 0) continue;
            facts.losses.push_back({kindTexts[kind].what, kindTexts[kind].meaning, found.line, found.count});
        }
    }

private:
    struct Count {
        std::size_t line = 0;
        std::size_t count = 0;
    };
    enum class Aperture { None, Selected, Dropped };

    void add(Count &total) {
        if (total.count++ == 0) total.line = line_;
    }
    void count(Kind kind) { add(counts_[kind]); }
    void addAs(Kind kind, const Count &more) {
        if (more.count == 0) return;
        Count &total = counts_[kind];
        total.line = total.count == 0 ? more.line : std::min(total.line, more.line);
        total.count += more.count;
    }

    // The reader refuses a file for any function but copper, also for one without a value.
    void setFileFunction(Text values) {
        const bool isCopperSoFar = facts.fileFunction.empty() || facts.fileFunction.front() == "Copper";
        std::vector<std::string> function;
        for (const Text value : splitText(upTo(values, '*'), ','))
            function.emplace_back(value);
        if (function.empty()) function.emplace_back();
        if (facts.fileFunction.empty() || (isCopperSoFar && function.front() != "Copper"))
            facts.fileFunction = std::move(function);
        facts.isGerberText = true;
    }

    void addName(Text name) {
        constexpr std::size_t limit = 16; // a layer has one or two
        if (facts.names.size() < limit) facts.names.emplace_back(name);
    }

    // Attributes stand in comments where a file is made for readers that don't know them.
    void takeComment(Text text) {
        if (startsWith(text, "G04")) facts.isGerberText = true;
        constexpr Text functionMark = "TF.FileFunction,";
        const std::size_t function = text.find(functionMark);
        if (text.find("#@!") != Text::npos && function != Text::npos)
            setFileFunction(text.substr(function + functionMark.size()));
        constexpr Text orderMark = "Layer_Physical_Order=";
        const std::size_t order = text.find(orderMark);
        if (order != Text::npos) facts.physicalOrder = EDA::leadingInt(text.substr(order + orderMark.size()));
        constexpr Text filmMark = "Film Name:";
        const std::size_t film = text.find(filmMark);
        if (film != Text::npos) addName(EDA::trimmed(text.substr(film + filmMark.size())));
        if (text.front() == ';') takeDrillComment(text.substr(1));
    }

    // "FILE_FORMAT=4:4", "FORMAT={3:3/ absolute / ...}", and tools by "Holesize 1 = 0.5".
    void takeDrillComment(Text text) {
        const std::size_t format = text.find("FORMAT=");
        if (format != Text::npos) {
            Text digits = text.substr(format + 7);
            if (startsWith(digits, "{")) digits.remove_prefix(1);
            if (digits.size() >= 3 && isDigit(digits[0]) && digits[1] == ':' && isDigit(digits[2]))
                setFormat(digits[0] - '0', digits[2] - '0');
        }
        const std::vector<Text> parts = splitText(text, ' ');
        const auto isMark = [](Text part) { return EDA::equalsIgnoreCase(part, "Holesize"); };
        if (!isDrilling_ || std::none_of(parts.begin(), parts.end(), isMark)) return;
        currentTool_ = 1;
        if (isMark(parts[0]) && parts.size() > 3 && EDA::leadingDouble(parts[3]) > 0.0)
            sizedTools_.insert(EDA::toInt(EDA::leadingDouble(parts[1])));
    }

    void setFormat(int integerDigits, int decimalDigits) {
        facts.hasFormat = true;
        facts.integerDigits = integerDigits;
        facts.decimalDigits = decimalDigits;
    }

    void takeExtended(Text text) {
        const Text body = text.substr(1);
        if (isExtendedName(body)) facts.isGerberText = true;
        constexpr Text functionMark = "TF.FileFunction";
        if (startsWith(body, functionMark)) {
            const Text rest = body.substr(functionMark.size());
            if (startsWith(rest, ",") || startsWith(rest, "*"))
                setFileFunction(rest.substr(rest[0] == ',' ? 1 : 0));
        }
        if (startsWith(body, "LN") || startsWith(body, "IN")) addName(upTo(body.substr(2), '*'));
        if (startsWith(body, "MO"))
            facts.units = EDA::equalsIgnoreCase(body.substr(2, 2), "in") ? "in" : "mm";
        if (startsWith(body, "FS") && body.substr(0, 5).find('I') != Text::npos) count(Incremental);
        if (startsWith(body, "LP") && aperture_ == Aperture::Selected) aperture_ = Aperture::Dropped;
        if (startsWith(body, "MI") && isTransform(text, 0.0)) count(Mirror);
        if (startsWith(body, "OF") && isTransform(text, 0.0)) count(Offset);
        if (startsWith(body, "SF") && isTransform(text, 1.0)) count(Scale);
        if (startsWith(body, "IR") && EDA::leadingDouble(body.substr(2)) != 0.0) count(Rotation);
        if (startsWith(body, "ASAYBX")) count(AxisSwap);
        if (startsWith(body, "AM")) takeMacro(body);
        if (startsWith(body, "IPNEG")) count(NegativeImage);
    }

    // A field that is no plain number counts as one that turns.
    void takeMacro(Text body) {
        for (const Text primitive : splitText(body, '*')) {
            const std::vector<Text> fields = splitText(primitive, ',', true);
            if (fields.size() < 7) continue;
            const Text code = EDA::trimmed(fields[0]);
            const bool isRing = code == "6" || code == "7";
            const Text angle = EDA::trimmed(fields.back());
            const bool isTurned = angle.find('$') != Text::npos || EDA::leadingDouble(angle) != 0.0;
            if (code == "5" && isTurned) count(TurnedPolygon);
            if (isRing && isTurned) count(TurnedRing);
            const bool isWhole = fields[2].find('.') == Text::npos || EDA::leadingDouble(fields[2]) == 0.0;
            if (isRing && !isWhole) count(RingBesideOrigin);
        }
    }

    void takePlain(Text text) {
        if (text.front() == 'G') return takeCode(text);
        if (text.front() == 'D') return select(text);
        if (text.front() != 'X' && text.front() != 'Y' && text.front() != 'I' && text.front() != 'J') return;
        takeCoordinates(text, false);
    }

    void select(Text text) {
        if (EDA::leadingInt(text.substr(1)) < 10) return takeCoordinates(text, false);
        facts.isGerberText = true;
        aperture_ = Aperture::Selected;
    }

    void takeCode(Text text) {
        const int code = EDA::leadingInt(text.substr(1));
        const std::size_t rest = std::min(text.find_first_not_of("0123456789", 1), text.size());
        if (rest > 1) facts.isGerberText = true;
        switch (code) {
        case 1:
        case 2:
        case 3:
            isArc_ = code != 1;
            if (rest < text.size()) takeCoordinates(text.substr(rest), true);
            return;
        case 36:
        case 37:
            inRegion_ = code == 36;
            return;
        case 54:
            return select(text.substr(rest));
        case 70:
            return add(inchCodes_);
        case 71:
            return add(metricCodes_);
        case 74:
        case 75:
            saysQuadrants_ = true;
            return;
        case 91:
            return count(Incremental);
        default:
            return;
        }
    }

    void takeCoordinates(Text text, bool hasCode) {
        if (endsWith(text, "D01") || endsWith(text, "D1")) {
            operation_ = 1;
            if (!hasCode && isArc_ && saysQuadrants_) count(LoneArcCode);
        } else if (endsWith(text, "D02") || endsWith(text, "D2")) {
            operation_ = 2;
        } else if (endsWith(text, "D03") || endsWith(text, "D3")) {
            operation_ = 3;
        }
        if (text.find('+') != Text::npos) count(PlusSign);
        if (operation_ != 2 && text.find('D') != Text::npos) facts.isGerberText = true;
        if (operation_ != 2 && !inRegion_ && aperture_ == Aperture::Dropped) count(PolarityDropsAperture);
    }

    void takeDrill(Text text) {
        isDrilling_ = true;
        if (text.front() == 'X' || text.front() == 'Y' || text.front() == 'R') return takeHole(text);
        if (text.front() == 'T') return takeTool(text);
        if (startsWith(text, "M00") && currentTool_ < unknownTool) ++currentTool_;
        if (startsWith(text, "G91") || startsWith(text, "ICI,ON")) count(Incremental);
        for (const Text code : {"G00", "G01", "G02", "G03", "M15"}) {
            if (startsWith(text, code)) count(Route);
        }
        for (const Text inch : {"INCH", "M72"}) {
            if (startsWith(text, inch)) setDrillUnits(text, "in");
        }
        for (const Text metric : {"METRIC", "M71"}) {
            if (startsWith(text, metric)) setDrillUnits(text, "mm");
        }
    }

    void setDrillUnits(Text text, const char *units) {
        facts.units = units;
        const bool keepsLeading = text.find("TZ") == Text::npos && text.find("LZ") != Text::npos;
        if (keepsLeading_ && text.find("TZ") == Text::npos && !keepsLeading) count(ZerosLost);
        keepsLeading_ = keepsLeading;
        // A sample of a number: "METRIC,TZ,000.000".
        for (const Text part : splitText(text, ',')) {
            const std::size_t point = part.find('.');
            if (point == Text::npos || part.find_first_not_of("0.") != Text::npos || part.size() > 16)
                continue;
            setFormat(static_cast<int>(point), static_cast<int>(part.size() - point - 1));
        }
    }

    void takeTool(Text text) {
        const std::size_t size = text.find('C');
        const int tool = EDA::leadingInt(text.substr(1));
        if (size == Text::npos) {
            currentTool_ = tool;
        } else if (EDA::leadingDouble(text.substr(size + 1)) > 0.0) {
            sizedTools_.insert(tool);
        }
    }

    void takeHole(Text text) {
        if (text.find('.') != Text::npos) count(DecimalPoint);
        if (text.find('+') != Text::npos) count(PlusSign);
        if (text.find("G85") != Text::npos) count(Slot);
        if (currentTool_ < 0) {
            count(NoTool);
        } else if (sizedTools_.count(currentTool_) == 0) {
            count(ToolWithoutSize);
        }
    }

    static constexpr int unknownTool = 1'000'000;

    std::array<Count, numKinds> counts_;
    Count inchCodes_;
    Count metricCodes_;
    std::size_t line_ = 0;
    bool isArc_ = false;
    bool saysQuadrants_ = false;
    bool inRegion_ = false;
    int operation_ = 2;
    Aperture aperture_ = Aperture::None;
    bool isDrilling_ = false;
    bool keepsLeading_ = false;
    int currentTool_ = -1;
    std::set<int> sizedTools_;
};

} // namespace

GerberFacts lookThroughGerber(std::string text) {
    Look look;
    walkGerberStatements(text, [&look](const GerberStatement &statement) { look.take(statement); });
    look.finish();
    return std::move(look.facts);
}

} // namespace EDATool
