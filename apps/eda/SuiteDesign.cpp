// Reading a design of one of the layout suite's families.
#include "Console.h"
#include "Failure.h"
#include "Files.h"
#include "Formats.h"
#include "host/FileSystem/File.h"
#include "host/FileSystem/OSPaths.h"
#include "host/FileSystem/Path.h"
#include "host/FileSystem/TemporaryFolder.h"
#include "host/QvDbWrap/Configuration.h"
#include "host/QvDbWrap/DesignFile.h"
#include "Printable.h"
#include "readers/VelkinEDAReader.h"
#include "SuiteSteps.h"
#include "WarningList.h"

#include <new>

namespace EDATool {

namespace {

using FileSystem::Path;

constexpr std::size_t lineLimit = 300;

// The reader leaves logs beside what it reads, and counts and removes all of certain names that it finds
// there, some of which may be the user's. So it is given a configuration that stands for the design, in a
// folder of its own. The logs come there, and the folder of the design stays as it is and need not be
// writable.
class StandIn {
public:
    StandIn(const std::string &file, const std::string &step) {
        if (folder_.path().empty()) throw DesignFailure(printable(folder_.error()));
        const std::string design = FileSystem::OSPaths::getAbsolutePath(file);
        const std::string stem = folder_.path() + "/" + Path::getLastToken(Path::stripExtension(file));
        const std::string extension = readableExtension(file);
        const std::string beside = QvDbWrap::layoutBeside(file);
        // A reader would look for steps in an archive by itself.
        file_ = stem + (!extension.empty() ? extension : isArchive(file) ? ".cfg" : lowerExtension(file));
        write({design, step}, file_);
        if (!extension.empty() || beside == file || !FileSystem::File::exists(beside)) return;
        layoutBeside_ = beside;
        // Without the suite the reader asks whether this one is there.
        write({design, step}, stem + ".qvd");
    }

    const std::string &file() const { return file_; }

    // What is read in the design's place; empty for a design that is read itself.
    const std::string &layoutBeside() const { return layoutBeside_; }

private:
    // Of what the wrapper reads itself, whatever its name; else empty. By the extension the reader tells what
    // may be a package.
    static std::string readableExtension(const std::string &file) {
        const std::string head = readHead(file);
        if (looksLikeLayout(file, head)) return ".qvd";
        return looksLikeIpc(file, head) ? ".xml" : "";
    }

    static void write(const QvDbWrap::Configuration &configuration, const std::string &file) {
        try {
            QvDbWrap::writeConfiguration(configuration, file);
        } catch (const std::runtime_error &error) {
            throw DesignFailure(printable(error.what()));
        }
    }

    FileSystem::TemporaryFolder folder_;
    std::string file_;
    std::string layoutBeside_;
};

bool cutEnd(std::string &text, const std::string &end) {
    if (end.empty() || text.size() < end.size()) return false;
    if (text.compare(text.size() - end.size(), end.size(), end) != 0) return false;
    text.resize(text.size() - end.size());
    return true;
}

// The lines of a text as one.
std::string joined(const std::string &text) {
    std::string line;
    for (const std::string &part : messageLines(text))
        line += (line.empty() ? "" : "; ") + part;
    return line;
}

// A message of the reader ends with the log, whose warnings are told by themselves, or with a remark that
// there are no data, without a line break to the reason for that.
std::string reasonOf(const EDA::VelkinEDAReader &reader) {
    std::string text = reader.getError();
    std::string warnings;
    reader.hadWarnings(warnings);
    if (!cutEnd(text, warnings)) cutEnd(text, "No data read from the file.");
    // What the library says of it is its bare name.
    if (cutEnd(text, std::bad_alloc().what())) text += "there is not enough memory to read it";
    const std::string reason = joined(text);
    return reason.empty() ? "holds no board: neither an edge nor a conductor layer" : reason;
}

void addWarnings(const EDA::VelkinEDAReader &reader, const std::string &file, Design &design) {
    static const std::string prefix = "Warning: ";
    std::string text;
    reader.hadWarnings(text);
    WarningList warnings;
    for (const std::string &line : messageLines(text)) {
        const bool hasPrefix = line.compare(0, prefix.size(), prefix) == 0;
        warnings.add(inQuotes(file) + ": " +
                     shortened(hasPrefix ? line.substr(prefix.size()) : line, lineLimit));
    }
    warnings.moveTo(design.warnings, "kinds of warnings");
}

// None is shown once the design is read.
bool readWithProgress(EDA::VelkinEDAReader &reader, const std::string &file) {
    ConsoleProgress progress;
    reader.setToolProgress(&progress);
    const bool isRead = reader.readFile(file);
    reader.setToolProgress(nullptr);
    return isRead;
}

std::unique_ptr<EDA::VelkinEDAReader> makeReader() {
    return std::make_unique<EDA::VelkinEDAReader>(true, false);
}

} // namespace

std::unique_ptr<EDA::EDAReader> makeSuiteReader() { return makeReader(); }

void readSuiteDesign(const std::vector<std::string> &files, const DesignSettings &settings, Design &design) {
    const std::string &file = files.front();
    if (files.size() > 1)
        throw UsageFailure(inQuotes(file) + " and " + inQuotes(files[1]) +
                           " are two files, which are a design each");
    const StandIn standIn(file, chosenStep(file, settings, design));
    auto reader = makeReader();
    const bool isRead = readWithProgress(*reader, standIn.file());
    addWarnings(*reader, file, design);
    if (!isRead) {
        printWarnings(design);
        throw DesignFailure(inQuotes(file) + ": " + reasonOf(*reader));
    }
    if (!reader->getError().empty())
        design.warnings.push_back(inQuotes(file) + ": " + joined(reader->getError()));
    reader->getBoard().setSourceBoardFile(file);
    design.files.push_back(file);
    if (!standIn.layoutBeside().empty()) design.files.push_back(standIn.layoutBeside());
    design.hasBoard = true;
    design.reader = std::move(reader);
}

} // namespace EDATool
