// eda convert: a design goes straight to another format.
#include "Commands.h"

#include "Console.h"
#include "Design.h"
#include "Failure.h"
#include "GerberSettings.h"
#include "IdfBoard.h"
#include "IdfOutput.h"
#include "IdfUnits.h"
#include "Printable.h"

namespace EDATool {

namespace {

void checkArguments(const Arguments &arguments) {
    if (arguments.operands().empty()) throw UsageFailure("convert needs a FILE; see: eda convert --help");
    if (!arguments.has("--output")) throw UsageFailure("convert needs -o OUT.emn; see: eda convert --help");
    checkIdfUnits(arguments);
}

int run(const Arguments &arguments) {
    checkArguments(arguments);
    const IdfNames names = idfNames(arguments.value("--output"));
    Design design = readWholeDesign(arguments.operands(), designSettings(arguments));
    stopIfInterrupted();
    const std::string file = inQuotes(design.files.front());
    if (!design.hasBoard) throw DesignFailure(file + ": is a library; its board file is missing");
    checkIdfNames(names, filesOf(design));
    const IdfBoard result = makeIdfBoard(design.board(), idfUnits(arguments.value("--units")));
    for (const std::string &notice : result.notices)
        design.warnings.push_back(file + ": " + notice);
    stopIfInterrupted();
    writeIdfPair(result.board, names);
    print(idfSummary(result.board, names));
    printWarnings(design);
    return static_cast<int>(Status::Done);
}

} // namespace

CommandDef convertCommand() {
    return {
        "convert",
        "FILE... -o OUT.emn",
        "Writes a design as an IDF 3.0 pair",
        "Reads a design and writes its board as IDF 3.0: a board file and, beside it, the library file\n"
        "with the component shapes (.emn with .emp, .brd with .lib, .bdf with .ldf, .idf with .lib). Both\n"
        "appear whole, or neither. Numbers have six significant digits. A warning for each kind tells\n"
        "what IDF cannot hold.\n",
        withGerberOptions(
            {{"--output", 'o', "OUT.emn", false, "The board file; the library file takes its name from it."},
             {"--units", 0, "MM|THOU", false,
              "Converts all lengths to these units. Default: those of the design. Where a design\n"
              "names none, or unknown ones, its lengths are taken to be in these."}}),
        run};
}

} // namespace EDATool
