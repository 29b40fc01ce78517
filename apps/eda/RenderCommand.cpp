// eda render: a picture of a design or a model.
#include "Commands.h"

#include "BoardScene.h"
#include "Console.h"
#include "Entities.h"
#include "Failure.h"
#include "Files.h"
#include "Formats.h"
#include "GerberSettings.h"
#include "LayerScene.h"
#include "Printable.h"
#include "text/Text.h"

#include <charconv>
#include <cmath>

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

void checkLayerOptions(const Arguments &arguments) {
    if (arguments.has("--merged") && arguments.has("--no-merge"))
        throw UsageFailure("--merged and --no-merge exclude each other");
    if (arguments.has("--bare") != arguments.has("--dpi"))
        throw UsageFailure("--bare and --dpi go together; see: eda render --help");
    if (arguments.has("--window") && !arguments.has("--bare"))
        throw UsageFailure("--window is for pictures with --bare");
    for (const char *option : {"--side", "--color"}) {
        if (arguments.has("--layer") && arguments.has(option))
            throw UsageFailure(std::string(option) +
                               " is for pictures of boards, --layer for those of a layer");
    }
}

double numberOf(const std::string &text, const std::string &option) {
    const double value = EDA::parseDouble(text, NAN, NAN);
    const bool isNumber = text.find_first_not_of("0123456789.+-eE") == std::string::npos;
    if (!isNumber || !std::isfinite(value))
        throw UsageFailure(option + " " + inQuotes(text) + " is no number");
    return value;
}

// "xLow,yLow,xHigh,yHigh"
Box windowOf(const std::string &text) {
    std::vector<double> values;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        values.push_back(numberOf(text.substr(begin, end - begin), "--window"));
        begin = end + 1;
    }
    const bool isBox = values.size() == 4 && values[0] < values[2] && values[1] < values[3];
    if (!isBox) throw UsageFailure("--window " + inQuotes(text) + " has not the form xLow,yLow,xHigh,yHigh");
    Box box;
    box.low = {values[0], values[1]};
    box.high = {values[2], values[3]};
    return box;
}

BareWindow bareWindowOf(const Arguments &arguments) {
    BareWindow window;
    if (!arguments.has("--bare")) return window;
    window.dpi = numberOf(arguments.value("--dpi"), "--dpi");
    if (window.dpi <= 0.0) throw UsageFailure("--dpi must be greater than 0");
    if (arguments.has("--window")) window.box = windowOf(arguments.value("--window"));
    return window;
}

DesignSettings settingsOf(const Arguments &arguments) {
    DesignSettings settings = designSettings(arguments);
    settings.importAs = "PCB"; // whatever imports make of it, a board has layers to be drawn
    if (arguments.has("--merged")) settings.options.emplace_back("Merge Conductors=Yes");
    if (arguments.has("--no-merge")) settings.options.emplace_back("Merge Conductors=No");
    return settings;
}

void checkNoDesignOptions(const Arguments &arguments) {
    for (const char *option : {"--copper", "--stackup"}) {
        if (arguments.has(option))
            throw UsageFailure(std::string(option) + " is for designs; a model has its layers already");
    }
}

BoardView readView(const Arguments &arguments, const std::string &output) {
    const std::vector<std::string> &files = arguments.operands();
    const Side side = sideOf(arguments);
    const bool wantsLayer = arguments.has("--layer") || arguments.has("--bare");
    const std::string layer = arguments.value("--layer", side == Side::Top ? "top" : "bottom");
    if (files.size() == 1 && isModelFile(files.front())) {
        checkNoDesignOptions(arguments);
        const std::unique_ptr<EntityModel::Model> model = loadModel(files.front());
        checkNotRead(output, files);
        const EntityModel::Entity &board =
            *findBoardOrPackage(*model, files.front(), arguments.value("--board"));
        return wantsLayer ? viewOfModelLayer(board, layer) : viewOfModel(board, side);
    }
    const Design design = readWholeDesign(files, settingsOf(arguments));
    checkNotRead(output, filesOf(design));
    printWarnings(design);
    const bool isOnlyLayers = design.board().numLayers() > 0 && (design.board().getOutline().empty() ||
                                                                 findFormat(design.format).isSetOfLayers);
    if (!wantsLayer && !isOnlyLayers) return viewOfDesign(design, side);
    return viewOfLayer(design, layer);
}

int run(const Arguments &arguments) {
    if (arguments.operands().empty()) throw UsageFailure("render needs a FILE; see: eda render --help");
    if (!arguments.has("--output"))
        throw UsageFailure("render needs -o OUT.svg or -o OUT.png; see: eda render --help");
    const std::string output = arguments.value("--output");
    const PictureFormat format = formatOf(output);
    const int width = widthOf(arguments);
    const Colouring colouring = colouringOf(arguments);
    checkLayerOptions(arguments);
    const BareWindow window = bareWindowOf(arguments);
    const BoardView view = readView(arguments, output);
    stopIfInterrupted();
    const Picture picture =
        arguments.has("--bare") ? drawBare(view, window) : drawBoard(view, width, colouring);
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
        "bumps and wirebonds of packages, and parts that are filtered with dashed lines. Of Gerber files it\n"
        "shows the copper of a layer, seen from the top, with the holes that reach it.\n",
        withGerberOptions(
            {{"--output", 'o', "OUT", false, "The picture; its extension, .svg or .png, is its format."},
             {"--side", 0, "top|bottom", false, "Which side to draw. Default: top."},
             {"--color", 0, "kind|power|density", false,
              "The colours of the parts: by their kind, by the power that they dissipate, or by that\n"
              "power over their area, in W/cm\u00b2. Parts without power are hollow. Default: kind."},
             {"--width", 0, "PIXELS", false, "Width of the picture, 200 to 8192. Default: 1600."},
             {"--board", 0, "DESIGNATOR", false,
              "Which board of a model, or of a set of Gerber files, where it has several."},
             {"--layer", 0, "NAME", false,
              "Draws the conductor of a layer: its name or file, its number from 1,\nor top or bottom. "
              "Default for "
              "Gerber files: top."},
             {"--merged", 0, nullptr, false,
              "Unites the conductors of Gerber files that overlap; the default."},
             {"--no-merge", 0, nullptr, false, "Leaves them as they are drawn."},
             {"--bare", 0, nullptr, false,
              "Draws the layer alone, black on white, each pixel wholly of one\ncolour, to be compared pixel "
              "by pixel; "
              "with --dpi."},
             {"--dpi", 0, "N", false, "Pixels per inch of a picture with --bare."},
             {"--window", 0, "XLOW,YLOW,XHIGH,YHIGH", false,
              "What a picture with --bare shows, in the units of the board.\nDefault: all of the layer."}}),
        run};
}

} // namespace EDATool
