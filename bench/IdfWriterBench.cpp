// Writing IDF pairs, against plain buffered output of the same bytes.
#include "host/FileSystem/FFofstream.h"
#include "writers/IDFWriter.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace {

using namespace EDA;

constexpr double roundTo = 1e5; // as many decimals as design systems write

class Random {
public:
    double below(double limit) { return std::round(engine_() / 4294967296.0 * limit * roundTo) / roundTo; }

private:
    std::mt19937 engine_{1};
};

void addPart(EDABoard &board, int number, Random &random) {
    EDAComponent part("ELECTRICAL");
    part.setName("PKG" + std::to_string(number));
    part.setPartNumber("PART" + std::to_string(number));
    part.setUnits("MM");
    part.setHeight(random.below(5.0));
    const double x = random.below(6.0), y = random.below(6.0);
    for (const auto &[px, py] : {std::pair{-x, -y}, {x, -y}, {x, y}, {-x, y}})
        part.addPoint(0, px, py, 0.0);
    part.addProperty("POWER_OPR", "250.0");
    board.addComponent(part, false);
    EDAComponentPlacement placed;
    placed.setName(part.getName());
    placed.setPartNumber(part.getPartNumber());
    placed.setReferenceDesignator("U" + std::to_string(number));
    placed.setLocation(random.below(1000.0), random.below(1000.0));
    placed.setAngle(45.0 * (number % 8));
    placed.setBoardSide("TOP");
    placed.setStatus("PLACED");
    board.addComponentPlacement(std::move(placed));
}

// A board with this many components, each placed once, and twice as many vias.
EDABoard makeBoard(int components) {
    Random random;
    EDABoard board;
    board.setName("board");
    board.setUnits("MM");
    for (const auto &[x, y] : {std::pair{0.0, 0.0}, {1e3, 0.0}, {1e3, 1e3}, {0.0, 1e3}})
        board.addPoint(0, x, y, 0.0);
    for (int i = 0; i < components; ++i)
        addPart(board, i, random);
    for (int i = 0; i < 2 * components; ++i) {
        EDAVia via;
        via.setDiameter(0.3 + 0.1 * (i % 5));
        via.setCentre(random.below(1000.0), random.below(1000.0));
        via.setPlatingStyle("PTH");
        via.setHoleType("VIA");
        board.addVia(via, false);
    }
    return board;
}

class Pair {
public:
    ~Pair() {
        std::filesystem::remove(board);
        std::filesystem::remove(library);
    }
    std::string text() const {
        std::string all;
        for (const std::string &file : {board, library}) {
            std::ifstream stream(file, std::ios::binary);
            all.append(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
        }
        return all;
    }
    const std::string board = (std::filesystem::temp_directory_path() / "eda-bench-out.emn").string();
    const std::string library = (std::filesystem::temp_directory_path() / "eda-bench-out.emp").string();
};

void writePair(benchmark::State &state) {
    const EDABoard board = makeBoard(static_cast<int>(state.range(0)));
    const Pair pair;
    for (auto _ : state)
        IDFWriter().writeFile(pair.board, pair.library, board);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(pair.text().size()));
}

// The yardstick: rows that are there already go, one after the other, to a stream of the same kind.
template <typename Stream> void writeRows(benchmark::State &state) {
    const EDABoard board = makeBoard(static_cast<int>(state.range(0)));
    const Pair pair;
    IDFWriter().writeFile(pair.board, pair.library, board);
    const std::string text = pair.text();
    for (auto _ : state) {
        Stream stream(pair.board);
        for (std::string_view rest = text; !rest.empty();) {
            const std::size_t end = rest.find('\n');
            stream << rest.substr(0, end) << '\n';
            rest.remove_prefix(end + 1);
        }
        stream.close();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

// The other yardstick: the numbers of the vias and of as many placements alone, by a standard stream.
void streamNumbers(benchmark::State &state) {
    const EDABoard board = makeBoard(static_cast<int>(state.range(0)));
    const Pair pair;
    std::int64_t bytes = 0;
    for (auto _ : state) {
        std::ofstream stream(pair.board, std::ios::binary);
        for (auto via = board.beginVias(); via != board.endVias(); ++via)
            stream << via->getDiameter() << ' ' << via->getXCentre() << ' ' << via->getYCentre() << '\n';
        bytes = stream.tellp();
    }
    state.SetBytesProcessed(state.iterations() * bytes);
}

BENCHMARK(writePair)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeRows<FileSystem::FFofstream>)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeRows<std::ofstream>)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(streamNumbers)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
