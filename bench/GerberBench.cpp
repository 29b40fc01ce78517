// Reading Gerber layers with and without merging, and drill files.
#include "GerberGenerator.h"
#include "HeapCount.h"
#include "readers/gerber/GerberReader.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace EDABench;

// A file on disk for as long as a benchmark runs.
class FileOnDisk {
public:
    FileOnDisk(const std::string &text, const char *extension)
        : path_((std::filesystem::temp_directory_path() / (std::string("eda-bench") + extension)).string()) {
        std::ofstream(path_, std::ios::binary) << text;
    }
    ~FileOnDisk() { std::filesystem::remove(path_); }
    const std::string &path() const { return path_; }

private:
    std::string path_;
};

struct Counts {
    std::size_t outlines = 0;
    std::size_t holes = 0;
};

Counts countOutlines(EDA::EDABoard &board) {
    Counts counts;
    for (auto layer = board.beginLayers(); layer != board.endLayers(); ++layer) {
        for (auto trace = layer->beginTraces(); trace != layer->endTraces(); ++trace) {
            ++counts.outlines;
            counts.holes += static_cast<std::size_t>(trace->getOutline().numInternalOutlines());
        }
    }
    return counts;
}

// Reads the layer again and again, each time by a new reader whose end counts as well.
void readFile(benchmark::State &state, const FileOnDisk &file, bool merging) {
    const int64_t objects = state.range(0);
    const std::size_t before = HeapCount::now();
    HeapCount::restartPeak();
    Counts counts;
    for (auto _ : state) {
        EDA::GerberReader reader;
        reader.setMergeConductors(merging);
        if (!reader.readFile(file.path())) state.SkipWithError("not read");
        state.PauseTiming();
        if (!reader.getError().empty()) state.SkipWithError(reader.getError().c_str());
        counts = countOutlines(reader.getBoard());
        state.ResumeTiming();
    }
    state.counters["peak_bytes_per_object"] =
        static_cast<double>(HeapCount::peak() - before) / static_cast<double>(objects);
    state.counters["outlines"] = static_cast<double>(counts.outlines);
    state.counters["holes"] = static_cast<double>(counts.holes);
    state.SetItemsProcessed(state.iterations() * objects);
}

void readLayer(benchmark::State &state) {
    readFile(state, FileOnDisk(generateLayer(static_cast<int>(state.range(0))), ".gbr"), false);
}

void readAndMerge(benchmark::State &state) {
    readFile(state, FileOnDisk(generateLayer(static_cast<int>(state.range(0))), ".gbr"), true);
}

// Pours that are cleared around their pads.
void readCleared(benchmark::State &state) {
    readFile(state, FileOnDisk(generateLayer(static_cast<int>(state.range(0)), {false, true}), ".gbr"),
             false);
}

// A G01, G02 or G03 alone repeats the stroke before it, as a dot.
void readLoneCodes(benchmark::State &state) {
    readFile(state, FileOnDisk(generateLayer(static_cast<int>(state.range(0)), {false, false, true}), ".gbr"),
             false);
}

void mergeStress(benchmark::State &state, Stress kind) {
    readFile(state, FileOnDisk(generateStress(static_cast<int>(state.range(0)), kind), ".gbr"), true);
}

void readDrill(benchmark::State &state) {
    const FileOnDisk file(generateDrill(static_cast<int>(state.range(0)), true), ".drl");
    const std::size_t before = HeapCount::now();
    HeapCount::restartPeak();
    for (auto _ : state) {
        EDA::GerberReader reader;
        if (!reader.readFile(file.path())) state.SkipWithError("not read");
    }
    state.counters["peak_bytes_per_object"] =
        static_cast<double>(HeapCount::peak() - before) / static_cast<double>(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(readLayer)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(readAndMerge)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(readCleared)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(readLoneCodes)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(readDrill)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(mergeStress, random, Stress::Random)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(mergeStress, duplicates, Stress::Duplicates)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(mergeStress, near, Stress::Near)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(mergeStress, fill, Stress::Fill)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
