// Reading IDX documents, against a bare parse of the same bytes into the toolkit's document tree.
#include "IdxGenerator.h"
#include "readers/IDXReader.h"
#include "writers/IDXWriter.h"

#include <QDomDocument>
#include <QFile>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

// A document on disk for as long as a benchmark runs.
class DocumentOnDisk {
public:
    explicit DocumentOnDisk(int instances)
        : path_((std::filesystem::temp_directory_path() / ("eda-bench-" + std::to_string(instances) + ".idx"))
                    .string()) {
        const std::string text = EDABench::generateIdx(instances);
        std::ofstream(path_, std::ios::binary).write(text.data(), static_cast<std::streamsize>(text.size()));
    }
    ~DocumentOnDisk() { std::filesystem::remove(path_); }
    const std::string &path() const { return path_; }

private:
    std::string path_;
};

bool readBoard(const std::string &path, std::size_t placements) {
    EDA::IDXReader reader;
    return reader.readFile(path) && reader.getBoard().numComponentPlacements() == placements;
}

bool parseBare(const std::string &path) {
    QFile file(QString::fromStdString(path));
    QDomDocument document("XML Document");
    return file.open(QIODevice::ReadOnly) && document.setContent(&file, true);
}

void readDocument(benchmark::State &state) {
    const DocumentOnDisk document(static_cast<int>(state.range(0)));
    for (auto _ : state)
        if (!readBoard(document.path(), static_cast<std::size_t>(state.range(0))))
            state.SkipWithError("not read");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void bareParse(benchmark::State &state) {
    const DocumentOnDisk document(static_cast<int>(state.range(0)));
    for (auto _ : state)
        if (!parseBare(document.path())) state.SkipWithError("not parsed");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void writeDocument(benchmark::State &state) {
    const DocumentOnDisk document(static_cast<int>(state.range(0)));
    EDA::IDXReader reader;
    if (!reader.readFile(document.path())) state.SkipWithError("not read");
    for (auto _ : state)
        if (!EDA::IDXWriter().writeFile(document.path(), reader.getBoard()))
            state.SkipWithError("not written");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(readDocument)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(bareParse)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(writeDocument)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

// `--once read FILE N` and `--once parse FILE` do it once, for measuring the peak of a process; `--make FILE
// N` writes a document of N placements.
int main(int argc, char **argv) {
    if (argc == 5 && std::strcmp(argv[1], "--once") == 0)
        return readBoard(argv[3], static_cast<std::size_t>(std::stoul(argv[4]))) ? 0 : 1;
    if (argc == 4 && std::strcmp(argv[1], "--once") == 0) return parseBare(argv[3]) ? 0 : 1;
    if (argc == 4 && std::strcmp(argv[1], "--make") == 0) {
        const std::string text = EDABench::generateIdx(std::stoi(argv[3]));
        return std::ofstream(argv[2], std::ios::binary)
                       .write(text.data(), static_cast<std::streamsize>(text.size()))
                   ? 0
                   : 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
