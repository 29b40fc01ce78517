// The front end of fabrication sets beside the reader that takes what it writes.
#include "fabrication/drills/DrillWriter.h"
#include "fabrication/layers/ClearResolver.h"
#include "fabrication/layers/LayerFile.h"
#include "fabrication/layers/LayerWriter.h"
#include "GerberGenerator.h"
#include "HeapCount.h"
#include "readers/gerber/GerberReader.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace EDABench;
using namespace EDA::Fabrication;

// Counts what is written.
class CountingSink : public TextSink {
public:
    void write(std::string_view text) override { bytes_ += text.size(); }
    std::size_t bytes() const { return bytes_; }

private:
    std::size_t bytes_ = 0;
};

std::string layerText(int objects) { return generateLayer(objects, {true, false}); }

void setCounters(benchmark::State &state, std::size_t bytes) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(bytes));
}

// Reads the layer and writes it anew.
void translate(benchmark::State &state, const std::string &text) {
    const std::size_t before = HeapCount::now();
    HeapCount::restartPeak();
    std::size_t written = 0;
    for (auto _ : state) {
        CountingSink sink;
        Notes notes;
        NetPoints nets;
        LayerWriter writer(sink, "Copper,L1,Top", &nets);
        if (mayHoldClear(text)) {
            ClearResolver resolver(writer, notes);
            readLayerFile(text, LayerRules(), resolver, notes);
            resolver.finish();
        } else {
            readLayerFile(text, LayerRules(), writer, notes);
        }
        writer.finish();
        written = sink.bytes();
    }
    state.counters["peak_of_file"] =
        static_cast<double>(HeapCount::peak() - before) / static_cast<double>(text.size());
    state.counters["written_of_file"] = static_cast<double>(written) / static_cast<double>(text.size());
    setCounters(state, text.size());
}

void translateLayer(benchmark::State &state) {
    translate(state, layerText(static_cast<int>(state.range(0))));
}

// Pours that are cleared around their pads: the front end works the clear objects in.
void translateCleared(benchmark::State &state) {
    translate(state, generateLayer(static_cast<int>(state.range(0)), {false, true}));
}

// The same layer by the reader alone, without merging: what the front end is measured against.
void readLayer(benchmark::State &state) {
    const std::string text = layerText(static_cast<int>(state.range(0)));
    const std::filesystem::path path = std::filesystem::temp_directory_path() / "eda-bench-layer.gbr";
    std::ofstream(path, std::ios::binary) << text;
    for (auto _ : state) {
        EDA::GerberReader reader;
        reader.setMergeConductors(false);
        if (!reader.readFile(path.string())) state.SkipWithError("not read");
    }
    std::filesystem::remove(path);
    setCounters(state, text.size());
}

void translateDrills(benchmark::State &state) {
    const std::string text = generateDrill(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        CountingSink sink;
        Notes notes;
        const DrillNumbers numbers =
            settleNumbers(text, lookAtDrillFile(text), DrillNumbers(), Geometry::Bound2D(), notes);
        writeDrillFile(readDrillFile(text, numbers, {}, notes), sink);
    }
    setCounters(state, text.size());
}

BENCHMARK(translateLayer)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(translateCleared)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(readLayer)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(translateDrills)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
