// QuorvitySuite.exe: converts a design to a layout in text form.
#include "host/FileSystem/File.h"
#include "host/QvDbWrap/DesignFile.h"
#include "host/QvDbWrap/LayoutFile.h"
#include "host/QvDbWrap/WrapperLog.h"

#include <cstdio>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#ifdef _WIN32
#include <QtCore/QCoreApplication>
#endif

namespace {

const char *const usage =
    "Usage: QuorvitySuite.exe DESIGN [-o FILE.qvd] [--step NAME]\n\n"
    "Converts a design to a layout in text form, which eda and other hosts read in the design's place.\n"
    "Takes IPC-2581 documents and layouts in text form.\n\n"
    "Options:\n"
    "  -o, --output FILE.qvd  Where the layout goes. Default: beside the design, under its name. It appears\n"
    "                         whole or not at all, and replaces no file but a layout in text form.\n"
    "      --step NAME        The step of the design that is converted. Default: the one that it names.\n"
    "  -h, --help             Prints this text.\n"
    "      --version          Prints the version.\n\n"
    "Exit status: 0 done; 1 the design could not be read or the layout not written; 2 wrong usage.\n"
    "Warnings go to standard error and do not change the status.\n";

enum class Status { Done = 0, Failed = 1, Usage = 2 };

struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Request {
    std::string design;
    std::string output; // empty: beside the design
    std::string step;
    bool isHelp = false;
    bool isVersion = false;
};

// What a design's name or content brings along must not steer a terminal.
std::string printable(std::string text) {
    for (char &c : text) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = '?';
    }
    return text;
}

void tell(const std::string &text) {
    std::fputs(("QuorvitySuite: " + printable(text) + "\n").c_str(), stderr);
}

// The value of an option, behind its "=" or in the next text, which is then taken.
std::string takeValue(const std::vector<std::string> &texts, std::size_t &index, std::size_t equals) {
    std::string value;
    if (equals != std::string::npos) {
        value = texts[index].substr(equals + 1);
    } else if (index + 1 < texts.size()) {
        value = texts[++index];
    }
    if (value.empty()) throw UsageError("an option needs a value; see --help");
    return value;
}

void takeOption(const std::vector<std::string> &texts, std::size_t &index, Request &request) {
    const std::string &text = texts[index];
    const std::size_t equals = text.compare(0, 2, "--") == 0 ? text.find('=') : std::string::npos;
    const std::string name = text.substr(0, equals);
    if (name == "-o" || name == "--output") {
        request.output = takeValue(texts, index, equals);
    } else if (name == "--step") {
        request.step = takeValue(texts, index, equals);
    } else if (text == "-h" || text == "--help") {
        request.isHelp = true;
    } else if (text == "--version") {
        request.isVersion = true;
    } else {
        throw UsageError("unknown option " + text + "; see --help");
    }
}

Request parse(const std::vector<std::string> &texts) {
    Request request;
    for (std::size_t index = 0; index < texts.size(); ++index) {
        const std::string &text = texts[index];
        if (text.size() > 1 && text[0] == '-') {
            takeOption(texts, index, request);
        } else if (!request.design.empty()) {
            throw UsageError("one DESIGN is converted at a time; see --help");
        } else {
            request.design = text;
        }
    }
    return request;
}

// A file of another form may be a layout of the suite, which cannot be made anew.
void checkOutput(const std::string &output, const std::string &design) {
    using FileSystem::File;
    if (File::isSame(output, design))
        throw UsageError(output + ": is the design itself; -o can name another file");
    if (File::exists(output) && !QvDbWrap::isLayoutFile(output))
        throw std::runtime_error(output + ": is no layout in text form, so it is not written over");
}

void tellWarnings(const std::string &log) {
    for (std::size_t start = 0; start < log.size();) {
        const std::size_t end = log.find('\n', start);
        tell(log.substr(start, end - start));
        start = end + 1;
    }
}

void convert(const Request &request) {
    if (request.design.empty()) throw UsageError("a DESIGN is missing; see --help");
    const std::string output =
        request.output.empty() ? QvDbWrap::layoutBeside(request.design) : request.output;
    checkOutput(output, request.design);
    QvDbWrap::DesignRequest how;
    how.step = request.step;
    QvDbWrap::WrapperLog log;
    const QvDbWrap::Layout layout = QvDbWrap::readDesignFile(request.design, how, log);
    tellWarnings(log.text());
    QvDbWrap::writeLayoutFile(layout, output);
}

Status run(const std::vector<std::string> &texts) {
    const Request request = parse(texts);
    if (request.isHelp) {
        std::fputs(usage, stdout);
    } else if (request.isVersion) {
        std::fputs("QuorvitySuite " EDA_VERSION "\n", stdout);
    } else {
        convert(request);
    }
    return std::fflush(stdout) == 0 ? Status::Done : Status::Failed;
}

Status runGuarded(const std::vector<std::string> &texts) {
    try {
        return run(texts);
    } catch (const UsageError &error) {
        tell(error.what());
        return Status::Usage;
    } catch (const std::bad_alloc &) {
        tell("there is not enough memory");
    } catch (const std::exception &error) {
        tell(error.what());
    }
    return Status::Failed;
}

} // namespace

int main(int argc, char **argv) {
    std::vector<std::string> texts(argv + (argc > 0 ? 1 : 0), argv + argc);
#ifdef _WIN32
    // Only the toolkit sees the arguments as Unicode there.
    const QCoreApplication application(argc, argv);
    texts.clear();
    for (const QString &text : application.arguments().mid(1))
        texts.push_back(text.toStdString());
#endif
    return static_cast<int>(runGuarded(texts));
}
