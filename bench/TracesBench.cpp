// Importing the conductors of a detailed layer, and saving them: shapes and routes of 20 points each.
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "host/EntityModel/ModelFile.h"
#include "import/EDAImporter.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>

#if defined(__GLIBC__)
#include <malloc.h>
#include <sys/resource.h>
#endif

namespace {

using namespace EntityModel;

constexpr int pointsEach = 20;

// Stars in a grid, so that nothing is simpler than a polygon, and none of their coordinates is short.
class ConductorReader : public EDA::EDAReader {
public:
    ConductorReader(int count, bool asRoutes) {
        board_.setUnits("MM");
        for (const auto &[x, y] : {std::pair{0.0, 0.0}, {1e4, 0.0}, {1e4, 1e4}})
            board_.addPoint(0, x, y, 0.0);
        EDA::EDABoardLayer layer;
        for (int i = 0; i < count; ++i)
            layer.addTrace(makeTrace(i, asRoutes));
        board_.addLayer(std::move(layer));
    }
    bool readFile(const std::string &) override { return true; }
    Entity *getOptions() override { return nullptr; }

private:
    static EDA::EDATrace makeTrace(int number, bool asRoute) {
        EDA::EDATrace trace;
        if (asRoute) trace.setRouteWidth(0.15);
        const double x = (number % 1000) * 10.0 + 5.0, y = (number / 1000) * 10.0 + 5.0;
        for (int i = 0; i < pointsEach; ++i) {
            const double angle = 6.283185307179586 * i / pointsEach;
            const double radius = i % 2 == 0 ? 4.0 : 2.5;
            trace.addPoint(0, x + radius * std::cos(angle), y + radius * std::sin(angle), 0.0);
        }
        trace.getOutline().setMaterial("Copper");
        return trace;
    }
};

double inUse() {
#if defined(__GLIBC__) && (__GLIBC__ > 2 || __GLIBC_MINOR__ >= 33)
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
#else
    return 0.0;
#endif
}

double peakOfProcess() {
#if defined(__GLIBC__)
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024.0;
#else
    return 0.0;
#endif
}

// Of the processor, which other programs of the machine do not add to.
double secondsSince(std::clock_t from) { return static_cast<double>(std::clock() - from) / CLOCKS_PER_SEC; }

std::unique_ptr<Model> importInto(EDA::EDAReader &reader) {
    auto model = std::make_unique<Model>();
    EntityEditor::createEntity(Chassis_t, model->root(), AttributePath(Chassis_t));
    EDA::EDAImporter importer(nullptr, "", "");
    importer.importBoard(&reader, nullptr, model->root(), nullptr);
    return model;
}

// One board a run: the peak of the process is that of the largest run so far.
void importAndSave(benchmark::State &state, bool asRoutes) {
    const auto count = static_cast<double>(state.range(0));
    const std::string file = (std::filesystem::temp_directory_path() / "eda-traces-bench.json").string();
    for (auto _ : state) {
        const double empty = inUse();
        ConductorReader reader(static_cast<int>(state.range(0)), asRoutes);
        const double withBoard = inUse();
        std::clock_t from = std::clock();
        const std::unique_ptr<Model> model = importInto(reader);
        const double importTime = secondsSince(from);
        state.counters["board B each"] = (withBoard - empty) / count;
        state.counters["import B each"] = (inUse() - withBoard) / count;
        state.counters["import us each"] = importTime * 1e6 / count;
        from = std::clock();
        std::string error;
        if (!ModelFile::save(*model, file, error)) state.SkipWithError(error.c_str());
        const double saveTime = secondsSince(from);
        state.counters["save us each"] = saveTime * 1e6 / count;
        state.counters["file MB"] = static_cast<double>(std::filesystem::file_size(file)) / 1e6;
        state.counters["peak MB"] = peakOfProcess() / 1e6;
        state.SetIterationTime(importTime + saveTime);
    }
    std::filesystem::remove(file);
}

BENCHMARK_CAPTURE(importAndSave, shapes, false)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(importAndSave, routes, true)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(50000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
