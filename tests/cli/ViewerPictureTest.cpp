// Pictures of real layers beside those that a viewer of layer files draws of the same window and dots.
#include "JsonText.h"
#include "support/RunTool.h"

#include <QtCore/QStandardPaths>
#include <QtGui/QImage>

#include <rapidjson/document.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string_view>

namespace {

using namespace TestSupport;

const std::string corpus = EDA_CORPUS;
constexpr double millimetresPerInch = 25.4;

// Layers that the viewer draws otherwise, with the cause and the share of dots that agree all the same.
struct Exception {
    const char *file;
    const char *cause;
    double share;
};
constexpr char coarseExport[] =
    "its picture files have widths and ends of lines in whole dots and coarse circles";
constexpr Exception exceptions[] = {
    {"g07/TOP.art", coarseExport, 0.998},
    {"g07/PWR.art", coarseExport, 0.998},
    {"g07/LAYER_1.art", coarseExport, 0.998},
    {"g07/LAYER_2.art", coarseExport, 0.998},
    {"g07/GND2.art", coarseExport, 0.998},
    {"g07/BOTTOM.art", coarseExport, 0.998},
    {"g09/Gerber/EtchLayerTop.gdo", coarseExport, 0.998},
    {"g09/Gerber/EtchLayerBottom.gdo", coarseExport, 0.998},
    {"g15/custom_pads_test-F_Cu.gbr",
     "it breaks outlines of macros with many points and paints over the rest", 0.7},
    {"g18/polarity-6_vbat.gbr", "it makes all of the picture dark around a negative image", 0.9},
    {"g18/uwe-example.gbr", coarseExport, 0.97},
    {"g18/eaglecad1-top-cop.gbx", coarseExport, 0.998},
};

double wantedShare(const std::string &file) {
    for (const Exception &exception : exceptions) {
        if (file == exception.file) return exception.share;
    }
    return 0.999;
}

struct Window {
    int dotsPerInch = 0;
    int width = 0; // dots
    int height = 0;
    double x = 0.0; // millimetres
    double y = 0.0;
};

// The copper layers of a set, as the tool finds them. One folder holds no set but single files of many kinds.
std::vector<std::string> layersOf(const std::string &set) {
    constexpr std::string_view copper = "copper layer";
    std::vector<std::string> files;
    const std::string folder = corpus + "/gerber/" + set;
    if (set == "g18") {
        for (const auto &entry : std::filesystem::directory_iterator(std::filesystem::u8path(folder))) {
            const std::string name = entry.path().filename().u8string();
            if (name.find("drl") == std::string::npos && name.find("drill") == std::string::npos &&
                name.find(".ncd") == std::string::npos)
                files.push_back(set + "/" + name);
        }
        return files;
    }
    const rapidjson::Document json = parseJson(runTool({"info", folder, "--json"}).out);
    for (const auto &file : json["files"].GetArray()) {
        if (std::string_view(file["use"].GetString()).substr(0, copper.size()) == copper)
            files.push_back(set + "/" + file["file"].GetString());
    }
    return files;
}

// All that the layer holds and a margin around it, which copper in a wrong place would reach.
bool findWindow(const std::string &file, Window &window) {
    constexpr double margin = 5.0;
    constexpr double mostDots = 5000.0;
    const ToolResult info = runTool({"info", file, "--json"});
    rapidjson::Document json;
    json.Parse(info.out.c_str());
    if (json.HasParseError() || !json.HasMember("bound") || !json["bound"].IsArray()) return false;
    const auto &bound = json["bound"];
    const double width = bound[2].GetDouble() - bound[0].GetDouble() + 2 * margin;
    const double height = bound[3].GetDouble() - bound[1].GetDouble() + 2 * margin;
    window.dotsPerInch =
        static_cast<int>(std::min(2500.0, mostDots * millimetresPerInch / std::max(width, height)));
    const auto dots = [&window](double length) {
        return static_cast<int>(std::ceil(length / millimetresPerInch * window.dotsPerInch));
    };
    window.width = dots(width);
    window.height = dots(height);
    window.x = bound[0].GetDouble() - margin;
    window.y = bound[1].GetDouble() - margin;
    return true;
}

std::string printed(const char *format, double a, double b) {
    std::array<char, 100> text{};
    std::snprintf(text.data(), text.size(), format, a, b);
    return text.data();
}

// Widths a little less than whole dots, so that rounding adds none.
QImage drawn(const std::string &file, const Window &window, const std::string &to) {
    const double dot = millimetresPerInch / window.dotsPerInch;
    const std::string place = printed("%.9f,%.9f,", window.x, window.y) +
                              printed("%.9f,%.9f", window.x + (window.width - 0.001) * dot,
                                      window.y + (window.height - 0.001) * dot);
    const ToolResult result = runTool({"render", file, "--bare", "--dpi", std::to_string(window.dotsPerInch),
                                       "--window=" + place, "-o", to});
    EXPECT_EQ(result.status, 0) << result.err;
    return QImage(QString::fromStdString(to));
}

QImage viewed(const std::string &viewer, const std::string &file, const Window &window,
              const std::string &to) {
    const std::string origin =
        printed("%.6fx%.6f", window.x / millimetresPerInch, window.y / millimetresPerInch);
    const std::string size = printed("%.6fx%.6f", (window.width + 0.4) / window.dotsPerInch,
                                     (window.height + 0.4) / window.dotsPerInch);
    runProgram(viewer,
               {"-x", "png", "-D", std::to_string(window.dotsPerInch), "-B0", "-O", origin, "-W", size, "-f",
                "#000000ff", "-b", "#ffffff", "-o", to, file},
               QProcessEnvironment::systemEnvironment());
    return QImage(QString::fromStdString(to));
}

// Bytes: 1 is dark.
class Dots {
public:
    explicit Dots(const QImage &image) : image_(image.convertToFormat(QImage::Format_Grayscale8)) {}

    int width() const { return image_.width(); }
    int height() const { return image_.height(); }

    bool isDark(int x, int y) const {
        return x >= 0 && y >= 0 && x < width() && y < height() && image_.constScanLine(y)[x] < 128;
    }
    bool isDarkNear(int x, int y) const {
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                if (isDark(x + dx, y + dy)) return true;
            }
        }
        return false;
    }

    // The part of the dark dots that have a dark one of the other picture in place or beside it.
    double shareIn(const Dots &other) const {
        long dark = 0, common = 0;
        for (int y = 0; y < height(); ++y) {
            for (int x = 0; x < width(); ++x) {
                if (!isDark(x, y)) continue;
                ++dark;
                if (other.isDarkNear(x, y)) ++common;
            }
        }
        return dark == 0 ? 1.0 : static_cast<double>(common) / static_cast<double>(dark);
    }

private:
    QImage image_;
};

// The pictures of the plain build are compared: sanitizers see nothing new in them and take ten times as
// long.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool isPlainBuild = false;
#else
constexpr bool isPlainBuild = true;
#endif

class ViewerPictures : public testing::TestWithParam<int> {};

TEST_P(ViewerPictures, OfALayerAreTheSame) {
    const QString viewer = QStandardPaths::findExecutable("gerbv");
    if (!isPlainBuild || !std::filesystem::exists(corpus) || viewer.isEmpty())
        GTEST_SKIP() << "needs the corpus and a viewer";
    const std::string set = printed("g%02.0f", GetParam(), 0);
    const TempFolder folder;
    const std::vector<std::string> files = layersOf(set);
    EXPECT_FALSE(files.empty());
    for (const std::string &name : files) {
        SCOPED_TRACE(name);
        const std::string file = corpus + "/gerber/" + name;
        Window window;
        ASSERT_TRUE(findWindow(file, window));
        const Dots ours(drawn(file, window, folder.path("ours.png")));
        const Dots theirs(viewed(viewer.toStdString(), file, window, folder.path("theirs.png")));
        ASSERT_EQ(ours.width(), theirs.width());
        ASSERT_EQ(ours.height(), theirs.height());
        EXPECT_GE(std::min(ours.shareIn(theirs), theirs.shareIn(ours)), wantedShare(name));
    }
}

INSTANTIATE_TEST_SUITE_P(OfRealSets, ViewerPictures, testing::Range(1, 20),
                         [](const auto &set) { return printed("g%02.0f", set.param, 0); });

} // namespace
