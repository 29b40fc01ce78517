// A host program that embeds the library: reads an IDF pair, imports it, and shows what came of it.
//
//     embed BOARD.emn
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Types.h"
#include "host/EntityModel/Undo.h"
#include "import/EDAImporter.h"
#include "readers/BoardUnits.h"
#include "readers/IDFReader.h"

#include <cstdio>
#include <string>

using namespace EntityModel;

namespace {

bool readDesign(EDA::IDFReader &reader, const std::string &boardFile) {
    return reader.readFile(boardFile) && reader.readFile(reader.getMatchingLibraryFilename(boardFile));
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: embed BOARD.emn\n");
        return 2;
    }
    EDA::IDFReader reader;
    if (!readDesign(reader, argv[1])) {
        std::fprintf(stderr, "%s: %s\n", argv[1], reader.getError().c_str());
        return 1;
    }

    // Lengths in units that the host does not know would be lost without a word.
    const std::string unknown = EDA::describeUnknownUnits(reader.getBoard());
    if (!unknown.empty()) {
        std::fprintf(stderr, "%s: %s\n", argv[1], unknown.c_str());
        return 1;
    }

    // A project with a chassis is what a board is put under.
    Model model(Velkin_Solver_Project_t);
    EntityEditor::createEntity(Chassis_t, model.root(), AttributePath(Chassis_t));

    EDA::EDAImporter importer(nullptr, "", "");
    importer.setImportOptions(reader.getOptions(), reader.getBoard());
    Entity *const board = importer.importBoard(&reader, nullptr, model.root(), nullptr);
    std::fputs(importer.getErrorString().c_str(), stderr);
    if (!board) return 1;

    std::vector<Entity *> holes;
    board->getOwnedChildEntitiesOfType(holes, PCB_Hole_t, false, true);
    std::printf("%s is %s, %s thick, with %zu holes\n",
                getPreciceStringValue(board, AttributePath(Reference_Designator_t), "").c_str(),
                getTypeValue(board, AttributePath(Shape_t), TypeRef()).getLabel().c_str(),
                getPreciceStringValue(board, AttributePath("Thickness"), "").c_str(), holes.size());

    // The whole import is one step.
    UndoStack::instance().undo();
    std::vector<Entity *> left;
    EntityFetcher::getBoundingEntity(model.root())->getOwnedChildEntitiesOfType(left, PCB_t, false, true);
    std::printf("after undo: %zu boards\n", left.size());
    return left.empty() ? 0 : 1;
}
