// Reading XFL files, against the plain splitting of the same rows into texts.
#include "readers/XFLReader.h"
#include "XflGenerator.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

// A file on disk for as long as a benchmark runs.
class FileOnDisk {
public:
    explicit FileOnDisk(const std::string &text)
        : path_((std::filesystem::temp_directory_path() / "eda-bench.xfl").string()), size_(text.size()) {
        std::ofstream(path_, std::ios::binary).write(text.data(), static_cast<std::streamsize>(text.size()));
    }
    ~FileOnDisk() { std::filesystem::remove(path_); }
    const std::string &path() const { return path_; }
    std::size_t size() const { return size_; }

private:
    std::string path_;
    std::size_t size_;
};

std::size_t numItems(const EDA::EDABoard &board) {
    std::size_t count = board.numVias(1);
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer)
        count += layer->numTraces();
    return count;
}

std::size_t readBoard(const std::string &path) {
    EDA::XFLReader reader(false);
    return reader.readFile(path) && reader.getError().empty() ? numItems(reader.getBoard()) : 0;
}

std::size_t readPackage(const std::string &path) {
    EDA::XFLReader reader(true);
    if (!reader.readFile(path) || !reader.getError().empty()) return 0;
    return static_cast<std::size_t>(reader.getBoard().beginComponents()->getOutline().numInternalOutlines());
}

// The bytes of the file, line by line, each as a list of texts between blanks.
std::size_t splitRows(const std::string &path) {
    std::string bytes(std::filesystem::file_size(path), '\0');
    std::ifstream(path, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    std::size_t count = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const void *const found = std::memchr(bytes.data() + at, '\n', bytes.size() - at);
        const std::size_t end =
            found ? static_cast<std::size_t>(static_cast<const char *>(found) - bytes.data()) : bytes.size();
        std::vector<std::string> row;
        while (at < end) {
            while (at < end && (bytes[at] == ' ' || bytes[at] == '\t'))
                ++at;
            const std::size_t begin = at;
            while (at < end && bytes[at] != ' ' && bytes[at] != '\t')
                ++at;
            if (at > begin) row.emplace_back(bytes, begin, at - begin);
        }
        count += row.size();
        benchmark::DoNotOptimize(row.data());
        at = end + 1;
    }
    return count;
}

template <typename Run> void measure(benchmark::State &state, const std::string &text, const Run &run) {
    const FileOnDisk file(text);
    for (auto _ : state)
        if (run(file.path()) == 0) state.SkipWithError("not read");
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<long long>(file.size()));
}

int rowsOf(const benchmark::State &state) { return static_cast<int>(state.range(0)); }

void readRoutes(benchmark::State &state) { measure(state, EDABench::generateXfl(rowsOf(state)), readBoard); }

void readRoutesOfPackage(benchmark::State &state) {
    measure(state, EDABench::generateXfl(rowsOf(state)), readPackage);
}

void splitRoutes(benchmark::State &state) { measure(state, EDABench::generateXfl(rowsOf(state)), splitRows); }

void readViaSizes(benchmark::State &state) {
    measure(state, EDABench::generateXflVias(rowsOf(state)), readBoard);
}

BENCHMARK(splitRoutes)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(readRoutes)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(readRoutesOfPackage)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(readViaSizes)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

// `--make FILE ROWS` writes a file of so many rows of nets; `--once read FILE`, `--once package FILE` and
// `--once split FILE` do it once, for measuring a process.
int main(int argc, char **argv) {
    if (argc == 4 && std::strcmp(argv[1], "--once") == 0) {
        const std::string what = argv[2];
        const auto run = what == "read" ? readBoard : what == "package" ? readPackage : splitRows;
        return run(argv[3]) > 0 ? 0 : 1;
    }
    if (argc == 4 && std::strcmp(argv[1], "--make") == 0) {
        const std::string text = EDABench::generateXfl(std::stoi(argv[3]));
        return std::ofstream(argv[2], std::ios::binary)
                       .write(text.data(), static_cast<std::streamsize>(text.size()))
                   ? 0
                   : 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
