// Reading IPC-2581 documents, against a bare pass of the streaming parser over the same bytes.
#include "host/QvDbWrap/IpcDocument.h"
#include "host/QvDbWrap/IpcXml.h"
#include "host/QvDbWrap/WrapperLog.h"
#include "IpcGenerator.h"

#include <QFile>
#include <QXmlStreamReader>

#include <benchmark/benchmark.h>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr std::size_t megabyte = 1000000;

bool writeDocument(const std::string &path, std::size_t megabytes) {
    const std::string text = EDABench::generateIpc(megabytes * megabyte);
    std::ofstream stream(path, std::ios::binary);
    return static_cast<bool>(stream.write(text.data(), static_cast<std::streamsize>(text.size())));
}

// A document on disk for as long as a benchmark runs.
class DocumentOnDisk {
public:
    explicit DocumentOnDisk(std::size_t megabytes)
        : path_((std::filesystem::temp_directory_path() / ("eda-bench-" + std::to_string(megabytes) + ".xml"))
                    .string()) {
        writeDocument(path_, megabytes);
    }
    ~DocumentOnDisk() { std::filesystem::remove(path_); }
    const std::string &path() const { return path_; }

private:
    std::string path_;
};

bool readLayout(const std::string &path) {
    QvDbWrap::IpcXml xml(path);
    QvDbWrap::WrapperLog log;
    const QvDbWrap::Layout layout = QvDbWrap::readIpcDocument(xml, {}, log);
    return layout.layers.size() == 7 && !layout.layers[0].elements.empty() && !layout.vias.empty() &&
           log.isEmpty();
}

bool parseBare(const std::string &path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) return false;
    QXmlStreamReader stream(&file);
    while (!stream.atEnd())
        stream.readNext();
    return !stream.hasError();
}

void readDocument(benchmark::State &state) {
    const DocumentOnDisk document(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        if (!readLayout(document.path())) state.SkipWithError("not read");
    state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<std::int64_t>(megabyte));
}

void bareParse(benchmark::State &state) {
    const DocumentOnDisk document(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        if (!parseBare(document.path())) state.SkipWithError("not parsed");
    state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<std::int64_t>(megabyte));
}

BENCHMARK(readDocument)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(bareParse)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

} // namespace

// `--once read FILE` and `--once parse FILE` do it once, for measuring the peak of a process; `--make FILE N`
// writes a document of N megabytes.
int main(int argc, char **argv) {
    if (argc == 4 && std::strcmp(argv[1], "--once") == 0)
        return (std::strcmp(argv[2], "read") == 0 ? readLayout(argv[3]) : parseBare(argv[3])) ? 0 : 1;
    if (argc == 4 && std::strcmp(argv[1], "--make") == 0)
        return writeDocument(argv[2], std::stoul(argv[3])) ? 0 : 1;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
