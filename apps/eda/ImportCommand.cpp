// eda import: a design becomes a model file.
#include "Commands.h"

#include "Console.h"
#include "Design.h"
#include "Entities.h"
#include "Failure.h"
#include "Files.h"
#include "GerberSettings.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Units.h"
#include "host/Profiling/TraceRecorder.h"
#include "ImportOptions.h"
#include "ImportRun.h"
#include "Printable.h"
#include "PropertyWarnings.h"
#include "readers/BoardUnits.h"
#include "Report.h"
#include "TypeMap.h"

#include <chrono>
#include <sstream>

namespace EDATool {

using namespace EntityModel;

namespace {

std::string spellingList() {
    std::string list;
    for (const std::string &spelling : Units::lengthSpellings())
        list += (list.empty() ? "" : ", ") + spelling;
    return list;
}

void checkArguments(const Arguments &arguments) {
    if (arguments.operands().empty()) throw UsageFailure("import needs a FILE; see: eda import --help");
    if (!arguments.has("--output")) throw UsageFailure("import needs -o MODEL.json; see: eda import --help");
    if (arguments.has("--units") && !EDA::isKnownLengthUnit(arguments.value("--units"))) {
        throw UsageFailure("--units " + inQuotes(arguments.value("--units")) +
                           " is no unit of length; known are: " + spellingList());
    }
    if (arguments.has("--library") && arguments.has("--no-library"))
        throw UsageFailure("--library names a library and --no-library wants none");
}

// Neither output may take the place of what it is made from.
void checkOutputs(const Arguments &arguments, const Design &design, const Libraries &libraries) {
    std::vector<std::string> inputs = libraries.files();
    const std::vector<std::string> read = filesOf(design);
    inputs.insert(inputs.end(), read.begin(), read.end());
    if (arguments.has("--type-map")) inputs.push_back(arguments.value("--type-map"));
    for (const char *option : {"--output", "--trace"}) {
        if (!arguments.has(option)) continue;
        for (const std::string &file : inputs) {
            if (isSameFile(arguments.value(option), file)) {
                throw UsageFailure(inQuotes(file) + " is read, so " + option + " cannot write over it");
            }
        }
        checkWritable(arguments.value(option));
    }
}

// Lengths of an unknown unit would be lost without a word, so nothing is imported until all are known.
void settleUnits(Design &design, const std::string &units) {
    EDA::EDABoard &board = design.board();
    if (!units.empty()) {
        if (!EDA::isKnownLengthUnit(board.getUnits())) board.setUnits(units);
        for (auto component = board.beginComponents(); component != board.endComponents(); ++component) {
            const std::string &own = component->getUnits();
            if (!own.empty() && !EDA::isKnownLengthUnit(own)) component->setUnits(units);
        }
    }
    if (board.getUnits().empty()) {
        design.warnings.push_back(
            inQuotes(design.files.front()) +
            " names no units; its lengths are taken as millimetres, --units can say others");
        board.setUnits("mm");
    }
    const std::string unknown = EDA::describeUnknownUnits(board);
    if (unknown.empty()) return;
    throw DesignFailure(
        inQuotes(design.files.front()) + ": " + printable(unknown) +
        "; nothing was imported. --units can say what the lengths are in; accepted spellings: " +
        spellingList());
}

std::unique_ptr<Model> optionsOf(const Arguments &arguments, const ImportTarget &target, Design &design) {
    std::vector<std::string> changes;
    // A board that is there already stays what it is.
    if (target.board != nullptr) {
        changes.push_back(target.board->getType() == Substrate_t ? "Import Type=Component"
                                                                 : "Import Type=PCB");
    }
    if (arguments.has("--as")) changes.push_back("Import Type=" + arguments.value("--as"));
    const std::vector<std::string> &given = arguments.values("--option");
    changes.insert(changes.end(), given.begin(), given.end());
    return makeImportOptions(*design.reader, changes);
}

void writeTrace(const Profiling::TraceRecorder &recorder, const std::string &file) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    recorder.writeJson(stream);
    writeWhole(file, stream.str());
}

int conclude(const Arguments &arguments, const ImportOutcome &outcome) {
    for (const std::string &line : messageLines(outcome.messages))
        printWarning(line);
    if (!outcome.wasCancelled) return static_cast<int>(Status::Done);
    const std::string file = inQuotes(arguments.value("--output"));
    throw Failure(Status::Cancelled, outcome.isSaved
                                         ? "cancelled; " + file + " holds what was imported until then"
                                         : "cancelled; " + file + " was left as it was");
}

// What the import would pass over in silence, told before it starts.
void addWarnings(const Arguments &arguments, Design &design) {
    if (!preferencesTrouble().empty()) design.warnings.push_back(preferencesTrouble());
    if (arguments.has("--type-map")) {
        checkTypeMap(arguments.value("--type-map"), design.warnings);
    } else if (Libraries::shippedTypeMap().empty()) {
        design.warnings.push_back(
            "the type map that comes with eda is missing, so designators tell no types");
    }
    addPropertyWarnings(design.board(), design.warnings);
}

int run(const Arguments &arguments) {
    const auto start = std::chrono::steady_clock::now();
    checkArguments(arguments);
    Profiling::TraceRecorder recorder;
    if (arguments.has("--trace")) recorder.start();
    const DesignSettings settings = designSettings(arguments);
    Design design = readDesign(arguments.operands(), settings);
    stopIfInterrupted();
    if (!design.hasBoard)
        throw DesignFailure(inQuotes(design.files.front()) + ": is a library; its board file is missing");
    settleUnits(design, arguments.value("--units"));
    completeDesign(design, settings);
    Libraries libraries(arguments, design.warnings);
    checkOutputs(arguments, design, libraries);
    ImportTarget target = openTarget(arguments);
    const std::unique_ptr<Model> options = optionsOf(arguments, target, design);
    addWarnings(arguments, design);
    printWarnings(design);

    ImportOutcome outcome = runImport({arguments, libraries, *options}, design, target);
    saveImport(target, arguments.value("--output"), outcome);
    recorder.stop();
    if (arguments.has("--trace")) writeTrace(recorder, arguments.value("--trace"));
    outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const EntityCounts counts = countEntities(*target.model);
    print(arguments.has("--json") ? importJson(design, counts, outcome)
                                  : importText(design, counts, outcome, arguments.value("--output")));
    return conclude(arguments, outcome);
}

} // namespace

CommandDef importCommand() {
    return {
        "import",
        "FILE... -o MODEL.json",
        "Imports a design and saves the model",
        "Reads a design, imports its board into a model, saves the model and prints a summary: what was\n"
        "read, entities by type, what became of the parts, and where the model went. An IDF board file finds "
        "its\n"
        "library file by itself. Ctrl-C stops the import; the model then holds what was done so far, but\n"
        "never replaces a file that was there before.\n",
        withGerberOptions(
            {{"--output", 'o', "MODEL.json", false, "Where the model goes. It appears whole or not at all."},
             {"--as", 0, "PCB|Component", false,
              "What the board becomes. Default: the stored option, else PCB. An XFL file\nbecomes one "
              "component "
              "made of solids, in the chassis or on the board of --into."},
             {"--into", 0, "MODEL.json", false,
              "Imports over the board of this model instead of making a new one."},
             {"--board", 0, "DESIGNATOR", false,
              "Which board of that model, where it has several; without --into, which\none of a set of "
              "Gerber files of several boards."},
             {"--option", 0, "\"Label=value\"", true,
              "Sets an import option for this run, for example\n\"Import Via Keepouts=No\" or \"Min Height=2 "
              "mm\"."},
             {"--type-map", 0, "FILE", false,
              "Tells the type of a component by the prefix of its designators:\na text with lines of "
              "prefix,type."},
             {"--library", 0, "DIR", false,
              "A folder with components that replace those of the design, and\nwith materials."},
             {"--no-library", 0, nullptr, false,
              "Uses no library at all, nor the materials that come with eda."},
             {"--units", 0, "UNIT", false,
              "The unit of lengths where the files name none, or an unknown one."},
             {"--json", 0, nullptr, false, "Prints the summary as one JSON object for programs."},
             {"--trace", 0, "FILE", false, "Writes where the time went, for a trace viewer."}}),
        run};
}

} // namespace EDATool
