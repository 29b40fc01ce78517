// eda info: what is in a design or a model.
#include "Commands.h"

#include "Console.h"
#include "Design.h"
#include "Entities.h"
#include "Failure.h"
#include "GerberSettings.h"
#include "host/EntityModel/Types.h"
#include "Printable.h"
#include "Report.h"

namespace EDATool {

namespace {

std::string modelName(const EntityModel::Model &model) {
    const std::vector<EntityModel::Entity *> boards = findBoards(model);
    return boards.empty() ? std::string() : textOf(*boards.front(), EntityModel::Reference_Designator_t);
}

void showModel(const std::string &file, bool asJson) {
    const std::unique_ptr<EntityModel::Model> model = loadModel(file);
    stopIfInterrupted();
    const EntityCounts counts = countEntities(*model);
    if (asJson) {
        JsonReport report;
        report.addText("format", "model");
        report.addText("name", modelName(*model));
        report.addEntities(counts);
        report.addText("messages", "");
        print(report.finish());
    } else {
        print("File    " + shortened(file, 300) + "\nFormat  model\nName    " +
              shortened(modelName(*model), 100) + "\nEntities by type:\n" + entityTable(counts));
    }
}

void showDesign(const Arguments &arguments, bool asJson) {
    const Design design = readWholeDesign(arguments.operands(), designSettings(arguments));
    stopIfInterrupted();
    if (asJson) {
        JsonReport report;
        report.addDesign(design);
        report.addText("messages", joinedLines(design.warnings));
        print(report.finish());
    } else {
        print(designTable(design));
    }
    printWarnings(design);
}

int run(const Arguments &arguments) {
    const std::vector<std::string> &files = arguments.operands();
    if (files.empty()) throw UsageFailure("info needs a FILE; see: eda info --help");
    const bool asJson = arguments.has("--json");
    if (files.size() == 1 && isModelFile(files.front())) {
        showModel(files.front(), asJson);
    } else {
        showDesign(arguments, asJson);
    }
    return static_cast<int>(Status::Done);
}

} // namespace

CommandDef infoCommand() {
    return {
        "info",
        "FILE...",
        "Shows what is in a design or a model",
        "Reads a design, or a model that eda import saved, and prints what is in it. The files of a\n"
        "design belong together: an IDF board file finds its library file by itself (.emn with .emp,\n"
        ".brd with .lib, .bdf with .ldf, .idf with .lib). An IDX or IPC-2581 document is known by what is "
        "in\n"
        "it and is a design of its own, and so are an XFL file and a layout in text form. In place of other\n"
        "designs of the layout suite the .qvd beside them is read. A set of Gerber layers and drill files "
        "is\n"
        "given whole, or as its folder or archive: the table tells what each file was taken for and why.\n",
        withGerberOptions(
            {{"--json", 0, nullptr, false, "Prints one JSON object for programs."},
             {"--as", 0, "PCB|Component", false,
              "Of an XFL file: reads it as a board or as a package. Default: the stored\noption "
              "of imports, else PCB."}}),
        run};
}

} // namespace EDATool
