// Reading IDF pairs, and the import and the model file of a board with many items.
#include "IdfGenerator.h"
#include "host/EntityModel/EntityEditor.h"
#include "host/EntityModel/Model.h"
#include "host/EntityModel/ModelFile.h"
#include "host/EntityModel/Undo.h"
#include "import/EDAImporter.h"
#include "readers/IDFReader.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace {

using namespace EntityModel;

// A pair on disk for as long as a benchmark runs.
class PairOnDisk {
public:
    explicit PairOnDisk(int placements)
        : prefix_((std::filesystem::temp_directory_path() / ("eda-bench-" + std::to_string(placements))).string()) {
        EDABench::writeIdf(EDABench::generateIdf(placements), prefix_);
    }
    ~PairOnDisk() {
        std::filesystem::remove(board());
        std::filesystem::remove(library());
    }
    std::string board() const { return prefix_ + ".emn"; }
    std::string library() const { return prefix_ + ".emp"; }

private:
    std::string prefix_;
};

void readPair(benchmark::State &state) {
    const PairOnDisk pair(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        EDA::IDFReader reader;
        if (!reader.readFile(pair.board()) || !reader.readFile(pair.library())) state.SkipWithError("not read");
        if (reader.getBoard().numComponentPlacements() != static_cast<size_t>(state.range(0))) {
            state.SkipWithError("placements are missing");
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// A reader whose board has many holes and keepouts: what the import makes entities of.
class CrowdedReader : public EDA::EDAReader {
public:
    explicit CrowdedReader(int items) {
        board_.setUnits("MM");
        for (const auto &[x, y] : {std::pair{0.0, 0.0}, {1e4, 0.0}, {1e4, 1e4}}) board_.addPoint(0, x, y, 0.0);
        for (int i = 0; i < items / 2; ++i) {
            const double x = (i % 1000) * 10.0, y = (i / 1000) * 10.0;
            EDA::EDAOutline hole(true);
            EDA::EDAKeepout keepout("Via");
            for (const auto &[dx, dy] : {std::pair{0.0, 0.0}, {4.0, 0.0}, {4.0, 3.0}, {0.0, 3.0}}) {
                hole.addPoint(0, x + dx, y + dy, 0.0);
                keepout.addPoint(0, x + dx, y + dy, 0.0);
            }
            board_.getOutline().addInternalOutline(hole);
            board_.addKeepout(keepout);
        }
    }
    bool readFile(const std::string &) override { return true; }
    EntityModel::Entity *getOptions() override { return nullptr; }
};

std::unique_ptr<Model> importInto(EDA::EDAReader &reader) {
    auto model = std::make_unique<Model>();
    EntityEditor::createEntity(Chassis_t, model->root(), AttributePath(Chassis_t));
    EDA::EDAImporter importer(nullptr, "", "");
    importer.importBoard(&reader, nullptr, model->root(), nullptr);
    return model;
}

double bytesInUse() {
#if defined(__GLIBC__)
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
#else
    return 0.0;
#endif
}

void importItems(benchmark::State &state) {
    CrowdedReader reader(static_cast<int>(state.range(0)));
    importInto(reader); // Fills the caches of the outlines, which are no cost of the entities.
    const double before = bytesInUse();
    double perEntity = 0.0;
    for (auto _ : state) {
        const std::unique_ptr<Model> model = importInto(reader);
        perEntity = (bytesInUse() - before) / static_cast<double>(state.range(0));
    }
    state.counters["bytes_per_entity"] = perEntity;
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void writeModel(benchmark::State &state) {
    CrowdedReader reader(static_cast<int>(state.range(0)));
    const std::unique_ptr<Model> model = importInto(reader);
    size_t bytes = 0;
    for (auto _ : state) bytes = ModelFile::toText(*model).size();
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(bytes));
}

void readModel(benchmark::State &state) {
    CrowdedReader reader(static_cast<int>(state.range(0)));
    const std::string text = ModelFile::toText(*importInto(reader));
    std::string error;
    for (auto _ : state) {
        if (!ModelFile::parse(text, "model", error)) state.SkipWithError(error.c_str());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

// The yardstick: the same content built as a tree of Qt's JSON values, and written.
QJsonValue rebuilt(const QJsonValue &value) {
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        QJsonObject copy;
        for (auto member = object.begin(); member != object.end(); ++member) {
            copy.insert(member.key(), rebuilt(member.value()));
        }
        return copy;
    }
    if (value.isArray()) {
        QJsonArray copy;
        for (const QJsonValue &element : value.toArray())
            copy.append(rebuilt(element));
        return copy;
    }
    return value;
}

void qtBuildAndWrite(benchmark::State &state) {
    CrowdedReader reader(static_cast<int>(state.range(0)));
    const std::string text = ModelFile::toText(*importInto(reader));
    const QJsonObject content = QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
    qsizetype bytes = 0;
    for (auto _ : state)
        bytes = QJsonDocument(rebuilt(content).toObject()).toJson(QJsonDocument::Compact).size();
    if (bytes == 0) state.SkipWithError("nothing written");
}

void importAndWrite(benchmark::State &state) {
    CrowdedReader reader(static_cast<int>(state.range(0)));
    importInto(reader); // Fills the caches of the outlines.
    size_t bytes = 0;
    for (auto _ : state) bytes = ModelFile::toText(*importInto(reader)).size();
    if (bytes == 0) state.SkipWithError("nothing written");
}

BENCHMARK(importAndWrite)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(qtBuildAndWrite)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(readPair)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(importItems)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(writeModel)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(readModel)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
