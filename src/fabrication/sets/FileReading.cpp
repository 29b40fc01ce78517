// Extents of layers, and drill files with what surrounds them.
#include "fabrication/sets/FileReading.h"

#include "fabrication/sets/FileForm.h"
#include "fabrication/sets/FileRoles.h"
#include "fabrication/sets/NameRules.h"

namespace EDA::Fabrication {

namespace {

void fill(DrillNumbers &numbers, DrillNumbers const &more) {
    if (numbers.unit == Unit::Unknown) numbers.unit = more.unit;
    if (numbers.zeros == Zeros::Unknown) numbers.zeros = more.zeros;
    if (numbers.integerDigits < 0 && numbers.decimalDigits < 0) {
        numbers.integerDigits = more.integerDigits;
        numbers.decimalDigits = more.decimalDigits;
    }
}

// The table of the same name comes first; it may stand under another one, too, but not under that of another
// drill file.
std::map<int, DrillTool> toolsBeside(SetFile const &file, DrillSurroundings const &around, Notes &notes) {
    const std::string stem = lowerCase(stemOf(file.file));
    for (const bool sameName : {true, false}) {
        for (SetFile const &table : around.toolTables) {
            const std::string tableStem = lowerCase(stemOf(table.file));
            std::string text, error;
            if ((tableStem == stem) != sameName || (!sameName && around.stems.count(tableStem) > 0) ||
                !readText(table.file, text, error))
                continue;
            std::map<int, DrillTool> tools = readToolTable(text);
            if (tools.empty()) continue;
            notes.add(sameName ? NoteKind::Normalised : NoteKind::Guessed,
                      "sizes of tools from " + inQuotes(table.shown));
            return tools;
        }
    }
    return {};
}

} // namespace

Geometry::Bound2D const &extentsOf(SetFile &file) {
    std::string text, error;
    if (file.isLayerForm && !file.layer.bound.isValid() && readText(file.file, text, error)) {
        NullSink sink;
        Notes notes;
        file.layer = readLayerFile(text, LayerRules(), sink, notes);
    }
    return file.layer.bound;
}

bool readDrills(SetFile const &file, DrillSurroundings const &around, DrillData &data, Notes &notes,
                std::string &error, Tools::ToolProgress *progress) {
    std::string text;
    if (!readText(file.file, text, error)) return false;
    if (file.isLayerForm) {
        LayerFacts facts;
        LayerRules rules;
        rules.unit = around.byCaller.unit;
        data = readDrillsOfLayerFile(text, rules, notes, facts, progress);
        return true;
    }
    DrillFacts facts = file.drill;
    DrillNumbers numbers = around.byCaller;
    fill(numbers, facts.numbers);
    facts.numbers = numbers;
    std::map<int, DrillTool> beside;
    if (!facts.toolsWithoutSize.empty()) beside = toolsBeside(file, around, notes);
    data = readDrillFile(text, settleNumbers(text, facts, around.bySet, around.layers, notes), beside, notes,
                         progress);
    return true;
}

DrillSurroundings surroundingsOf(FabricationSet const &set, SetSettings const &settings) {
    DrillSurroundings around;
    around.byCaller = settings.drillNumbers;
    for (SetDrill const &drill : set.drills) {
        if (!drill.file.isLayerForm) fill(around.bySet, drill.file.drill.numbers);
        around.stems.insert(lowerCase(stemOf(drill.file.file)));
    }
    for (SetFile const &file : set.leftOut) {
        if (file.use == FileUse::Helper) around.toolTables.push_back(file);
        if (file.use == FileUse::Drill) around.stems.insert(lowerCase(stemOf(file.file)));
    }
    return around;
}

} // namespace EDA::Fabrication
