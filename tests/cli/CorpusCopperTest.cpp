// Real Gerber sets become models whole, and on the outline of their board.
#include "Design.h"
#include "Entities.h"
#include "Failure.h"
#include "Files.h"
#include "support/ImportBench.h"
#include "support/RunTool.h"

#include <QtGui/QImage>

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

namespace {

using namespace TestSupport;
using testing::HasSubstr;
using testing::Not;

const std::string corpus = EDA_CORPUS;

// The folders of the sets, each with the files of one or more boards.
std::vector<std::string> setFolders() {
    std::vector<std::string> folders;
    std::error_code error;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(corpus + "/gerber", error)) {
        if (entry.is_directory()) folders.push_back(entry.path().u8string());
    }
    std::sort(folders.begin(), folders.end());
    return folders;
}

// An island is a conductor of its own; what lies in a hole without being one is left out.
std::size_t numConductors(const EDA::EDAOutline &outline) {
    std::size_t count = 1;
    for (auto inner = outline.beginInternalOutlines(); inner != outline.endInternalOutlines(); ++inner)
        count += inner->isHole() ? 0 : numConductors(*inner);
    return count;
}

std::size_t numConductors(const EDA::EDABoard &board) {
    std::size_t count = 0;
    const auto add = [&count](const EDA::EDATrace &trace) {
        if (!trace.getOutline().isBadOutline()) count += numConductors(trace.getOutline());
    };
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer) {
        std::for_each(layer->beginTraces(), layer->endTraces(), add);
        for (auto net = layer->beginNets(); net != layer->endNets(); ++net)
            std::for_each(net->beginTraces(), net->endTraces(), add);
    }
    return count;
}

TEST(CorpusCopper, EverySetBecomesAModelWithAllThatItHolds) {
    const std::vector<std::string> folders = setFolders();
    if (folders.empty()) GTEST_SKIP() << "the corpus is not there";
    std::size_t numSets = 0;
    for (const std::string &folder : folders) {
        if (EDATool::filesInFolder(folder).empty()) continue;
        EDATool::Design design = EDATool::readDesign({folder});
        ++numSets;
        const EDA::EDABoard &board = design.board();
        ImportBench bench;
        bench.board() = board;
        if (board.getUnits().empty()) bench.board().setUnits("mm");
        // Of the copy, which shows its points as they are: clean-up leaves what was read from them before.
        const std::size_t expected = numConductors(bench.board());
        ASSERT_NE(bench.import(), nullptr) << folder;
        EDATool::EntityCounts counts = EDATool::countEntities(bench.model);
        EXPECT_EQ(counts["Conductor Layer"], board.numLayers()) << folder;
        EXPECT_EQ(counts["PCB Conductor"], expected) << folder;
        const auto cutOuts = static_cast<std::size_t>(board.getOutline().numInternalOutlines());
        EXPECT_EQ(counts["Via"] + counts["PCB Hole"], board.numVias(1) + cutOuts) << folder;
    }
    EXPECT_GE(numSets, 19u);
}

QImage renderBare(const TempFolder &folder, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"render", "--bare", "--dpi", "1000", "-o", folder.path("out.png")});
    const ToolResult result = runTool(arguments);
    EXPECT_EQ(result.status, 0) << result;
    return QImage(QString::fromStdString(folder.path("out.png")));
}

struct Pair {
    const char *board;
    const char *copper;
    const char *designWindow;
    const char *modelWindow;
};

TEST(CorpusCopper, CopperOnTheOutlineOfItsBoardStaysWhereItIs) {
    const Pair pairs[] = {
        {"/idf/i10/hub.emn", "/gerber/g13", "141.75,-120,158.25,-80", "0,-40,16.5,0"},
        {"/idf/i11/cpt.emn", "/gerber/g15", "", ""}, // one of them in thousandths of an inch
    };
    if (setFolders().empty()) GTEST_SKIP() << "the corpus is not there";
    for (const Pair &pair : pairs) {
        const TempFolder folder;
        const std::vector<std::string> copper{"--copper", corpus + pair.copper, "--drill-format", "3.3"};
        std::vector<std::string> import{"import", corpus + pair.board, "-o", folder.path("model.json")};
        import.insert(import.end(), copper.begin(), copper.end());
        const ToolResult result = runTool(import);
        ASSERT_EQ(result.status, 0) << result;
        EXPECT_THAT(result.err, Not(HasSubstr("--copper:"))) << pair.board;
        if (*pair.designWindow == '\0') continue;
        for (const char *layer : {"top", "bottom"}) {
            std::vector<std::string> design{corpus + pair.board, "--layer", layer,
                                            std::string("--window=") + pair.designWindow};
            design.insert(design.end(), copper.begin(), copper.end());
            const QImage expected = renderBare(folder, design);
            const QImage found = renderBare(folder, {folder.path("model.json"), "--layer", layer,
                                                     std::string("--window=") + pair.modelWindow});
            ASSERT_EQ(expected.size(), found.size());
            int differences = 0;
            for (int y = 0; y < found.height(); ++y) {
                for (int x = 0; x < found.width(); ++x)
                    differences += expected.pixel(x, y) != found.pixel(x, y) ? 1 : 0;
            }
            EXPECT_LT(differences, expected.width() * expected.height() / 500) << layer;
        }
    }
}

} // namespace
