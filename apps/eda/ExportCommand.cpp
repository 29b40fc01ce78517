// eda export: the board of a model becomes an IDX document or a pair of IDF files.
#include "Commands.h"

#include "BoardOutput.h"
#include "Console.h"
#include "Entities.h"
#include "export/EDAExporter.h"
#include "ExportLosses.h"
#include "Failure.h"
#include "host/EntityCore/EntityManager.h"
#include "host/EntityCore/GeometryBuilder.h"
#include "host/EntityModel/Types.h"
#include "IdfUnits.h"
#include "Printable.h"

#include <algorithm>

namespace EDATool {

using namespace EntityModel;

namespace {

// Does the export ask for the built part of this component, or of a via in it?
bool needsParts(const Entity &component) {
    std::vector<Entity *> vias;
    component.getOwnedChildEntitiesOfType(vias, Via_t, false, true);
    return !vias.empty() || getTypeValue(&component, Modelling_Level_t, TypeRef()) == Detailed_t;
}

bool needsAnyParts(const Entity &board) {
    std::vector<Entity *> children;
    board.getChildEntities(children);
    return std::any_of(children.begin(), children.end(), [](const Entity *child) {
        const Entity *const plugged = getLinkedEntity(child, ComponentLink_t);
        return needsParts(*child) || (plugged && needsParts(*plugged));
    });
}

// Built parts for as long as an export runs. Where some are needed all are built: one walk down the board
// takes less than looking up the board's shape again for each of them.
class BuiltParts {
public:
    explicit BuiltParts(Entity &board) {
        EntityGUI::EntityManager::setGeometryBuilder(&builder_);
        if (needsAnyParts(board)) builder_.buildPart(&board, true);
    }
    ~BuiltParts() { EntityGUI::EntityManager::setGeometryBuilder(nullptr); }
    BuiltParts(const BuiltParts &) = delete;
    BuiltParts &operator=(const BuiltParts &) = delete;

private:
    EntityGUI::GeometryBuilder builder_;
};

void checkArguments(const Arguments &arguments) {
    if (arguments.operands().size() != 1)
        throw UsageFailure("export needs one MODEL.json; see: eda export --help");
    if (!arguments.has("--output")) throw UsageFailure("export needs -o OUT.emn; see: eda export --help");
    checkIdfUnits(arguments);
}

int run(const Arguments &arguments) {
    checkArguments(arguments);
    const std::string output = arguments.value("--output");
    checkOutputName(output);
    const std::string &file = arguments.operands().front();
    const std::unique_ptr<Model> model = loadModel(file);
    Entity *const entity = findBoard(*model, file, arguments.value("--board"));
    stopIfInterrupted();
    checkOutput(output, {file});

    const BuiltParts parts(*entity);
    EDA::EDABoard board;
    EDA::EDAExporter().exportBoard(entity, board, idfUnits(arguments.value("--units")));
    const WrittenBoard written = writeBoard(board, output, std::string());
    print(written.summary);
    for (const std::vector<std::string> &notices : {exportLosses(*entity), written.notices})
        for (const std::string &notice : notices)
            printWarning(inQuotes(file) + ": " + notice);
    return static_cast<int>(Status::Done);
}

} // namespace

CommandDef exportCommand() {
    return {
        "export",
        "MODEL.json -o OUT.emn",
        "Writes the board of a model as IDF 3.0 or IDX",
        "Takes the board of a saved model, with its cut-outs, components, keepouts and vias, and writes\n"
        "it as an IDX document (.idx), or as IDF 3.0: a board file and, beside it, the library file with\n"
        "the component shapes (.emn with .emp, .brd with .lib, .bdf with .ldf, .idf with .lib). All\n"
        "appears whole, or not at all. A warning for each kind tells what the model has and the files\n"
        "cannot hold.\n",
        {{"--output", 'o', "OUT.emn", false,
          "The IDX document (.idx), or the IDF board file, from which the\nlibrary file takes its name."},
         {"--board", 0, "DESIGNATOR", false, "Which board of the model, where it has several."},
         {"--units", 0, "MM|THOU", false,
          "The units of all lengths. Default: those of the stored preferences, else MM."}},
        run};
}

} // namespace EDATool
