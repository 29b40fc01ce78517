// The command line tool eda: finds the command and runs it.
#include "Commands.h"
#include "Console.h"
#include "Failure.h"
#include "Printable.h"

#include <exception>
#include <new>

#ifdef _WIN32
#include <QtCore/QCoreApplication>
#endif

namespace EDATool {

namespace {

std::string usageText() {
    std::string text = "Usage: eda COMMAND [ARGUMENT...]\n\n"
                       "Moves designs of printed circuit boards into a thermal model.\n\nCommands:\n";
    for (const CommandDef &command : commands()) {
        const std::string name = command.name;
        text += "  " + name + std::string(10 - name.size(), ' ') + command.summary + "\n";
    }
    return text +
           "  help      Prints the help of a command: eda help COMMAND\n\n"
           "Options:\n"
           "  -h, --help  Prints this text; behind a command, that command's.\n"
           "  --version   Prints the version.\n\n"
           "Reads IDF 2.0 and 3.0 designs (.emn with .emp, .brd with .lib, .bdf with .ldf, .idf with .lib),\n"
           "IDX documents (.idx, .xml), IPC-2581 documents (.xml, .cvg), layouts in text form (.qvd), XFL\n"
           "files (.xfl), sets of Gerber layers and drill files, and its own model files (.json). Of other\n"
           "designs of the layout suite (.brd, .mcm, .sip, archives) it reads the .qvd beside them.\n\n"
           "Exit status: 0 done; 1 a file could not be read, imported or written; 2 wrong usage;\n"
           "3 cancelled. Warnings go to standard error and do not change the status.\n";
}

const CommandDef &findCommand(const std::string &name) {
    for (const CommandDef &command : commands()) {
        if (name == command.name) return command;
    }
    throw UsageFailure("unknown command " + inQuotes(name) + "; see: eda --help");
}

int runCommand(const CommandDef &command, const std::vector<std::string> &texts) {
    const Arguments arguments = parseArguments(command, texts);
    if (arguments.has("--help")) {
        print(helpText(command));
        return 0;
    }
    return command.run(arguments);
}

int runHelp(const std::vector<std::string> &texts) {
    if (texts.size() > 1) throw UsageFailure("help takes one COMMAND; see: eda --help");
    print(texts.empty() ? usageText() : helpText(findCommand(texts.front())));
    return 0;
}

int run(std::vector<std::string> texts) {
    if (texts.empty()) throw UsageFailure("a COMMAND is missing; see: eda --help");
    const std::string first = texts.front();
    texts.erase(texts.begin());
    if (first == "--help" || first == "-h" || first == "help") return runHelp(texts);
    if (first == "--version") {
        if (!texts.empty()) throw UsageFailure("--version stands alone");
        print("eda " EDA_VERSION "\n");
        return 0;
    }
    return runCommand(findCommand(first), texts);
}

int fail(Status status, const std::string &message) {
    printError(message);
    return static_cast<int>(status);
}

int runGuarded(const std::vector<std::string> &texts) {
    try {
        const int status = run(texts);
        return flushOutput() ? status : fail(Status::Failed, "standard output cannot be written");
    } catch (const Failure &failure) {
        return fail(failure.status(), failure.what());
    } catch (const std::bad_alloc &) {
        return fail(Status::Failed, "there is not enough memory");
    } catch (const std::exception &error) {
        return fail(Status::Failed, printable(error.what()));
    }
}

} // namespace

} // namespace EDATool

int main(int argc, char **argv) {
    EDATool::catchInterrupt();
    std::vector<std::string> texts(argv + (argc > 0 ? 1 : 0), argv + argc);
#ifdef _WIN32
    { // Only the toolkit sees the arguments as Unicode there; a picture makes an application of its own
      // later.
        const QCoreApplication application(argc, argv);
        texts.clear();
        for (const QString &text : application.arguments().mid(1))
            texts.push_back(text.toStdString());
    }
#endif
    return EDATool::runGuarded(texts);
}
