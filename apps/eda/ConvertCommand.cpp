// eda convert: a design goes straight to another format.
#include "Commands.h"

#include "BoardOutput.h"
#include "Console.h"
#include "Design.h"
#include "Failure.h"
#include "GerberSettings.h"
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
    const std::string output = arguments.value("--output");
    checkOutputName(output);
    DesignSettings settings = designSettings(arguments);
    settings.importAs = "PCB"; // whatever imports make of it, a board is what is written
    Design design = readWholeDesign(arguments.operands(), settings);
    stopIfInterrupted();
    const std::string file = inQuotes(design.files.front());
    if (!design.hasBoard) throw DesignFailure(file + ": is a library; its board file is missing");
    checkOutput(output, filesOf(design));
    const WrittenBoard written = writeBoard(design.board(), output, idfUnits(arguments.value("--units")));
    for (const std::string &notice : written.notices)
        design.warnings.push_back(file + ": " + notice);
    print(written.summary);
    printWarnings(design);
    return static_cast<int>(Status::Done);
}

} // namespace

CommandDef convertCommand() {
    return {
        "convert",
        "FILE... -o OUT.emn",
        "Writes a design as IDF 3.0 or IDX",
        "Reads a design and writes its board as an IDX document (.idx), or as IDF 3.0: a board file and,\n"
        "beside it, the library file with the component shapes (.emn with .emp, .brd with .lib, .bdf with\n"
        ".ldf, .idf with .lib). All appears whole, or not at all. Numbers of IDF have six significant\n"
        "digits, and so have places in IDX. A warning for each kind tells what the files cannot hold.\n",
        withGerberOptions(
            {{"--output", 'o', "OUT.emn", false,
              "The IDX document (.idx), or the IDF board file, from which the\nlibrary file takes its name."},
             {"--units", 0, "MM|THOU", false,
              "Converts all lengths to these units. Default: those of the design. Where a design\n"
              "names none, or unknown ones, its lengths are taken to be in these."}}),
        run};
}

} // namespace EDATool
