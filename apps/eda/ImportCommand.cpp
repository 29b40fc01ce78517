// eda import: a design becomes a model file.
#include "Commands.h"

#include "Console.h"
#include "Design.h"
#include "Entities.h"
#include "Failure.h"
#include "Files.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Undo.h"
#include "host/EntityModel/Units.h"
#include "host/FileSystem/File.h"
#include "host/Profiling/TraceRecorder.h"
#include "import/EDAImporter.h"
#include "ImportOptions.h"
#include "Printable.h"
#include "readers/BoardUnits.h"
#include "Report.h"

#include <chrono>
#include <sstream>

namespace EDATool {

using namespace EntityModel;

namespace {

// What one run of the command is about.
struct Target {
    std::unique_ptr<Model> model;
    Entity *board = nullptr; // the board to import over; null makes a new one
};

struct Outcome {
    bool wasCancelled = false;
    bool isSaved = false;
    std::string messages; // the importer's, a line each
    double seconds = 0.0;
};

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
    if (arguments.has("--board") && !arguments.has("--into")) {
        throw UsageFailure("--board chooses a board of the model that --into names");
    }
    const std::string kind = arguments.value("--as", "PCB");
    if (kind != "PCB" && kind != "Component") {
        throw UsageFailure("--as " + inQuotes(kind) + " is unknown; it takes PCB or Component");
    }
}

// Neither output may take the place of what it is made from.
void checkOutputs(const Arguments &arguments, const Design &design) {
    for (const char *option : {"--output", "--trace"}) {
        if (!arguments.has(option)) continue;
        for (const std::string &file : design.files) {
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

Target openTarget(const Arguments &arguments) {
    Target target;
    if (arguments.has("--into")) {
        const std::string file = arguments.value("--into");
        target.model = loadModel(file);
        target.board = findBoard(*target.model, file, arguments.value("--board"));
    } else {
        const UndoStackDisabler noUndo;
        target.model = std::make_unique<Model>(Velkin_Solver_Project_t);
        EntityEditor::createEntity(Chassis_t, target.model->root(), AttributePath(Chassis_t), nullptr, true,
                                   true, false, "Chassis");
    }
    return target;
}

std::unique_ptr<Model> optionsOf(const Arguments &arguments, const Target &target, Design &design) {
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

void runImporter(Design &design, Target &target, Entity *options, Outcome &outcome) {
    ConsoleProgress progress;
    EDA::EDAImporter importer(nullptr, std::string(), std::string());
    importer.setImportOptions(options, design.board());
    Entity *const board =
        importer.importBoard(design.reader.get(), target.board, target.model->root(), &progress);
    outcome.wasCancelled = progress.wasCancelled();
    outcome.messages = joinedLines(messageLines(importer.getErrorString()));
    if (board == nullptr && !outcome.wasCancelled) {
        throw DesignFailure(inQuotes(design.files.front()) + ": no board could be made" +
                            (outcome.messages.empty() ? "" : ": " + outcome.messages));
    }
}

// A cancelled import keeps what was done so far, but not in the place of a model that was whole.
void saveModel(const Model &model, const std::string &file, Outcome &outcome) {
    if (outcome.wasCancelled && FileSystem::File::exists(file)) return;
    std::string error;
    if (!ModelFile::save(model, file, error)) throw DesignFailure(printable(error));
    outcome.isSaved = true;
}

void writeTrace(const Profiling::TraceRecorder &recorder, const std::string &file) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    recorder.writeJson(stream);
    writeWhole(file, stream.str());
}

// What was read and has no entities yet, so that nobody takes the model for more than it is.
std::string leftOutLine(const EDA::EDABoard &board) {
    const std::pair<std::size_t, const char *> kinds[] = {{board.numComponentPlacements(), "placements"},
                                                          {board.numVias(1), "drilled holes and vias"},
                                                          {board.numBumps(1), "bumps"},
                                                          {board.numWirebonds(), "wirebonds"},
                                                          {board.numLayers(), "layers"}};
    std::string list;
    for (const auto &[count, name] : kinds) {
        if (count > 0) list += (list.empty() ? "" : ", ") + std::to_string(count) + " " + name;
    }
    if (list.empty()) return list;
    return "\nNot in the model, since this version imports the board, its cut-outs and its keepouts: " + list + "\n";
}

void printSummary(const Arguments &arguments, const Design &design, const EntityCounts &counts,
                  const Outcome &outcome) {
    if (arguments.has("--json")) {
        JsonReport report;
        report.addDesign(design);
        report.addText("messages", joinedLines(design.warnings));
        report.addEntities(counts);
        report.addText("importMessages", outcome.messages);
        print(report.finish());
        return;
    }
    print("Read:\n" + designTable(design) + "\nEntities by type:\n" + entityTable(counts) +
          leftOutLine(design.board()));
    if (outcome.isSaved) {
        print("\nModel saved as " + shortened(arguments.value("--output"), 300) + " after " +
              shortNumber(outcome.seconds, 3) + " s\n");
    }
}

int conclude(const Arguments &arguments, const Outcome &outcome) {
    for (const std::string &line : messageLines(outcome.messages))
        printWarning(line);
    if (!outcome.wasCancelled) return static_cast<int>(Status::Done);
    const std::string file = inQuotes(arguments.value("--output"));
    throw Failure(Status::Cancelled, outcome.isSaved
                                         ? "cancelled; " + file + " holds what was imported until then"
                                         : "cancelled; " + file + " was left as it was");
}

int run(const Arguments &arguments) {
    const auto start = std::chrono::steady_clock::now();
    checkArguments(arguments);
    Profiling::TraceRecorder recorder;
    if (arguments.has("--trace")) recorder.start();
    Design design = readDesign(arguments.operands());
    stopIfInterrupted();
    if (!design.hasBoard)
        throw DesignFailure(inQuotes(design.files.front()) + ": is a library; its board file is missing");
    checkOutputs(arguments, design);
    settleUnits(design, arguments.value("--units"));
    Target target = openTarget(arguments);
    const std::unique_ptr<Model> options = optionsOf(arguments, target, design);
    printWarnings(design);

    Outcome outcome;
    runImporter(design, target, options->root(), outcome);
    saveModel(*target.model, arguments.value("--output"), outcome);
    recorder.stop();
    if (arguments.has("--trace")) writeTrace(recorder, arguments.value("--trace"));
    outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    printSummary(arguments, design, countEntities(*target.model), outcome);
    return conclude(arguments, outcome);
}

} // namespace

CommandDef importCommand() {
    return {
        "import",
        "FILE... -o MODEL.json",
        "Imports a design and saves the model",
        "Reads a design, imports its board into a model, saves the model and prints a summary: what was\n"
        "read, entities by type, the messages, and where the model went. An IDF board file finds its\n"
        "library file by itself. Ctrl-C stops the import; the model then holds what was done so far, but\n"
        "never replaces a file that was there before.\n",
        {{"--output", 'o', "MODEL.json", false, "Where the model goes. It appears whole or not at all."},
         {"--as", 0, "PCB|Component", false, "What the board becomes. Default: the stored option, else PCB."},
         {"--into", 0, "MODEL.json", false,
          "Imports over the board of this model instead of making a new one."},
         {"--board", 0, "DESIGNATOR", false, "Which board of that model, where it has several."},
         {"--option", 0, "\"Label=value\"", true,
          "Sets an import option for this run, for example\n\"Import Via Keepouts=No\" or \"Min Height=2 "
          "mm\"."},
         {"--units", 0, "UNIT", false, "The unit of lengths where the files name none, or an unknown one."},
         {"--json", 0, nullptr, false, "Prints the summary as one JSON object for programs."},
         {"--trace", 0, "FILE", false, "Writes where the time went, for a trace viewer."}},
        run};
}

} // namespace EDATool
