// eda render: a picture of a design or a model.
#include "Commands.h"

#include "BoardScene.h"
#include "Console.h"
#include "Entities.h"
#include "Failure.h"
#include "Files.h"
#include "Printable.h"

#include <charconv>

namespace EDATool {

namespace {

enum class PictureFormat { Svg, Png };

PictureFormat formatOf(const std::string &file) {
    const std::string extension = lowerExtension(file);
    if (extension == ".svg") return PictureFormat::Svg;
    if (extension == ".png") return PictureFormat::Png;
    throw UsageFailure("the picture " + inQuotes(file) + " must end in .svg or .png");
}

int widthOf(const Arguments &arguments) {
    using namespace PictureLimits;
    const std::string text = arguments.value("--width", std::to_string(defaultWidth));
    int width = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), width);
    const bool isNumber = result.ec == std::errc() && result.ptr == text.data() + text.size();
    if (!isNumber || width < leastWidth || width > greatestWidth) {
        throw UsageFailure("--width " + inQuotes(text) + " is not a whole number of pixels from " +
                           std::to_string(leastWidth) + " to " + std::to_string(greatestWidth));
    }
    return width;
}

Side sideOf(const Arguments &arguments) {
    const std::string text = arguments.value("--side", "top");
    if (text == "top") return Side::Top;
    if (text == "bottom") return Side::Bottom;
    throw UsageFailure("--side " + inQuotes(text) + " is unknown; it takes top or bottom");
}

Colouring colouringOf(const Arguments &arguments) {
    const std::string text = arguments.value("--color", "kind");
    if (text == "kind") return Colouring::Kind;
    if (text == "power") return Colouring::Power;
    if (text == "density") return Colouring::Density;
    throw UsageFailure("--color " + inQuotes(text) + " is unknown; it takes kind, power or density");
}

void checkNotRead(const std::string &output, const std::vector<std::string> &files) {
    for (const std::string &file : files) {
        if (isSameFile(output, file))
            throw UsageFailure(inQuotes(file) + " is read, so it cannot be written over");
    }
}

BoardView readView(const Arguments &arguments, const std::string &output) {
    const std::vector<std::string> &files = arguments.operands();
    const Side side = sideOf(arguments);
    if (files.size() == 1 && isModelFile(files.front())) {
        const std::unique_ptr<EntityModel::Model> model = loadModel(files.front());
        checkNotRead(output, files);
        return viewOfModel(*findBoard(*model, files.front(), arguments.value("--board")), side);
    }
    if (arguments.has("--board")) throw UsageFailure("--board chooses a board of a model file");
    const Design design = readDesign(files);
    checkNotRead(output, design.files);
    printWarnings(design);
    return viewOfDesign(design, side);
}

int run(const Arguments &arguments) {
    if (arguments.operands().empty()) throw UsageFailure("render needs a FILE; see: eda render --help");
    if (!arguments.has("--output"))
        throw UsageFailure("render needs -o OUT.svg or -o OUT.png; see: eda render --help");
    const std::string output = arguments.value("--output");
    const PictureFormat format = formatOf(output);
    const int width = widthOf(arguments);
    const Colouring colouring = colouringOf(arguments);
    const BoardView view = readView(arguments, output);
    stopIfInterrupted();
    const Picture picture = drawBoard(view, width, colouring);
    std::string error;
    const std::string bytes = format == PictureFormat::Svg ? toSvg(picture) : toPng(picture, error);
    if (!error.empty()) throw DesignFailure(inQuotes(output) + ": " + error);
    writeWhole(output, bytes);
    return static_cast<int>(Status::Done);
}

} // namespace

CommandDef renderCommand() {
    return {
        "render",
        "FILE... -o OUT.svg|OUT.png",
        "Draws a picture of a design or a model",
        "Draws the board of a design, or of a model that eda import saved: its edge with cut-outs, drilled\n"
        "holes, keepouts, and components with their designators; with a scale bar and a legend. The bottom\n"
        "is drawn as it is seen from below. Of a model it shows sockets with what is in them, the solids,\n"
        "bumps and wirebonds of packages, and parts that are filtered with dashed lines.\n",
        {{"--output", 'o', "OUT", false, "The picture; its extension, .svg or .png, is its format."},
         {"--side", 0, "top|bottom", false, "Which side to draw. Default: top."},
         {"--color", 0, "kind|power|density", false,
          "The colours of the parts: by their kind, by the power that they dissipate, or by that\n"
          "power over their area, in W/cm\u00b2. Parts without power are hollow. Default: kind."},
         {"--width", 0, "PIXELS", false, "Width of the picture, 200 to 8192. Default: 1600."},
         {"--board", 0, "DESIGNATOR", false, "Which board of a model, where it has several."}},
        run};
}

} // namespace EDATool
