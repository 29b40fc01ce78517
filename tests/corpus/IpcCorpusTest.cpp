// Real IPC-2581 documents against facts that another program counted in them, and against plain searches of
// their text.
#include "readers/VelkinEDAReader.h"
#include "support/Patterns.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <rapidjson/document.h>

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace {

using namespace EDA;

std::string contentOf(const std::string &path) {
    std::ifstream stream(std::filesystem::u8path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// The elements of a name, each from its start to its end tag.
std::vector<std::string> elementsOf(const std::string &text, const std::string &name) {
    std::vector<std::string> elements;
    const std::string start = '<' + name + ' ', end = "</" + name + '>';
    for (std::size_t at = 0; (at = text.find(start, at)) != std::string::npos; ++at)
        elements.push_back(text.substr(at, text.find(end, at) - at));
    return elements;
}

std::string attribute(const std::string &element, const std::string &name) {
    const std::string start = ' ' + name + "=\"";
    const std::size_t at = element.find(start);
    if (at == std::string::npos) return {};
    return element.substr(at + start.size(), element.find('"', at + start.size()) - at - start.size());
}

struct Place {
    double x;
    double y;
};

Place placeIn(const std::string &element) {
    return {std::stod(attribute(element, "x")) * 0.0254, std::stod(attribute(element, "y")) * 0.0254};
}

// The design is read from a copy, since logs are written beside it.
class IpcCorpus : public testing::Test {
protected:
    IpcCorpus() : before_(qgetenv("EDA_TOOLS_DIR")), wasSet_(qEnvironmentVariableIsSet("EDA_TOOLS_DIR")) {
        folder_.write("QuorvitySuite.exe", "");
        qputenv("EDA_TOOLS_DIR", QByteArray::fromStdString(folder_.path()));
    }
    ~IpcCorpus() override { wasSet_ ? qputenv("EDA_TOOLS_DIR", before_) : qunsetenv("EDA_TOOLS_DIR"); }

    void SetUp() override {
        const std::string facts = contentOf(std::string(EDA_CORPUS) + "/facts.json");
        if (facts.empty()) GTEST_SKIP() << "no folder of real designs here";
        facts_.Parse(facts.c_str(), facts.size());
        ASSERT_FALSE(facts_.HasParseError());
    }

    void open(const std::string &name) {
        name_ = "ipc2581/" + name;
        text_ = contentOf(std::string(EDA_CORPUS) + '/' + name_);
        ASSERT_FALSE(text_.empty()) << name_;
        reader_ = std::make_unique<VelkinEDAReader>(true, false);
        EXPECT_TRUE(reader_->readFile(folder_.write("board.xml", text_))) << reader_->getError();
    }
    const EDABoard &board() const { return reader_->getBoard(); }

    std::string warnings() const {
        std::string text;
        reader_->hadWarnings(text);
        return text;
    }

    // How many elements of this name another program counted.
    std::size_t fact(const char *element) const {
        const auto &elements = facts_[name_.c_str()]["elements"];
        return elements.HasMember(element) ? elements[element].GetUint() : 0;
    }

    // What the first group of a pattern holds at each place where it fits.
    std::vector<std::string> all(const char *pattern) const { return test::allMatches(text_, pattern); }

    // The heights of the first stack-up, added up.
    double stackupHeight() const {
        const std::string stackup = text_.substr(0, text_.find("</Stackup>"));
        double height = 0;
        for (const std::string &thickness :
             test::allMatches(stackup, R"x(<StackupLayer [^>]*?\bthickness="([^"]*)")x"))
            height += std::stod(thickness);
        return height;
    }

    // The pins of packages, and where pads say that pins of components are.
    using Pins = std::map<std::string, std::map<std::string, Place>>;
    using Pads = std::map<std::pair<std::string, std::string>, std::vector<Place>>;

    Pins pins() const {
        Pins pins;
        for (const std::string &package : elementsOf(text_, "Package"))
            for (const std::string &pin : elementsOf(package, "Pin"))
                pins[attribute(package, "name")][attribute(pin, "number")] = placeIn(pin);
        return pins;
    }
    Pads pads() const {
        Pads pads;
        for (const std::string &pad : elementsOf(text_, "Pad"))
            for (const std::string &pin : test::allMatches(pad, "<PinRef [^>]*"))
                pads[{attribute(pin, "componentRef"), attribute(pin, "pin")}].push_back(placeIn(pad));
        return pads;
    }

    // How many pins of components on the bottom lie on a pad of theirs, and how many don't.
    std::pair<int, int> pinsOnPads() const {
        const Pins packages = pins();
        const Pads all = pads();
        std::pair<int, int> counts;
        for (const std::string &component : elementsOf(text_, "Component")) {
            const std::string designator = attribute(component, "refDes");
            for (auto placed = board().beginPlacements(); placed != board().endPlacements(); ++placed) {
                if (placed->getReferenceDesignator() != designator || placed->isOnBoardTop()) continue;
                for (const auto &[number, pin] : packages.at(attribute(component, "packageRef"))) {
                    const auto own = all.find({designator, number});
                    if (own != all.end())
                        ++(isOnPad(*placed, pin, own->second) ? counts.first : counts.second);
                }
            }
        }
        return counts;
    }
    // The importer flips a component of the bottom over and turns it then.
    static bool isOnPad(const EDAComponentPlacement &placed, const Place &pin,
                        const std::vector<Place> &pads) {
        const double angle = placed.getAngle(true) * 3.14159265358979323846 / 180;
        const double x = placed.getXLocation() - pin.x * std::cos(angle) - pin.y * std::sin(angle);
        const double y = placed.getYLocation() - pin.x * std::sin(angle) + pin.y * std::cos(angle);
        return std::any_of(pads.begin(), pads.end(),
                           [&](const Place &pad) { return std::hypot(pad.x - x, pad.y - y) < 5e-5; });
    }

    // The nets of the sets on conductors.
    std::set<std::string> netsInText() const {
        const auto conductors = all(R"x(<Layer name="([^"]*)" layerFunction="(?:CONDUCTOR|PLANE|SIGNAL)")x");
        const std::set<std::string> names(conductors.begin(), conductors.end());
        std::set<std::string> nets;
        for (std::size_t at = 0; (at = text_.find("<LayerFeature ", at)) != std::string::npos; ++at) {
            const std::string part = text_.substr(at, text_.find("</LayerFeature>", at) - at);
            if (names.count(test::allMatches(part, R"x(<LayerFeature layerRef="([^"]*)")x").at(0)) == 0)
                continue;
            for (const std::string &net : test::allMatches(part, R"x(<Set [^>]*?\bnet="([^"]+)")x"))
                nets.insert(net);
        }
        return nets;
    }

    std::size_t numConductors() const {
        std::size_t count = 0;
        for (auto layer = board().beginLayers(); layer != board().endLayers(); ++layer)
            count += layer->isConductor() ? 1 : 0;
        return count;
    }
    std::set<std::string> netNames() const {
        std::set<std::string> names;
        for (auto layer = board().beginLayers(); layer != board().endLayers(); ++layer)
            for (auto net = layer->beginNets(); net != layer->endNets(); ++net)
                names.insert(net->getName());
        return names;
    }

private:
    TestSupport::TempFolder folder_;
    const QByteArray before_;
    const bool wasSet_;
    rapidjson::Document facts_;
    std::string name_;
    std::string text_;
    std::unique_ptr<VelkinEDAReader> reader_;
};

constexpr double inch = 0.0254;
constexpr double rounding = 1e-9;

TEST_F(IpcCorpus, ACardOfSixConductorsHasAllItsThings) {
    open("p01/testcase3-revc-full.xml");
    EXPECT_EQ(board().numLayers(), fact("StackupLayer"));
    EXPECT_EQ(numConductors(), 6u);
    EXPECT_NEAR(board().getThickness(), stackupHeight() * inch, rounding);
    EXPECT_EQ(board().numComponentPlacements(), fact("Component"));
    EXPECT_EQ(board().numVias(1), fact("Hole"));
    const std::string profile = all("<Profile>[\\s\\S]*?</Profile>").at(0);
    EXPECT_EQ(board().getOutline().numInternalOutlines(), test::allMatches(profile, "<Cutout>").size());
    EXPECT_EQ(netNames(), netsInText());
    EXPECT_FALSE(netNames().empty());
}

TEST_F(IpcCorpus, ARigidFlexBoardHasTheStackUpOfItsLargestPart) {
    open("p02/testcase12-rdgflx-full.xml");
    EXPECT_EQ(numConductors(), 6u);
    EXPECT_NEAR(board().getThickness(), stackupHeight() * inch, rounding);
    EXPECT_NEAR(board().getThickness(),
                std::stod(all("<Stackup [^>]*overallThickness=\"([^\"]*)\"").at(0)) * inch, 1e-6 * inch * 2);
    EXPECT_EQ(board().numComponentPlacements(), fact("Component"));
    EXPECT_EQ(board().numVias(1), fact("Hole") + fact("SlotCavity"));
    EXPECT_EQ(netNames(), netsInText());
    EXPECT_THAT(warnings(),
                testing::HasSubstr("stack-up FLEX-2-LAYER is not read: the whole board gets PRIMARY"));
    EXPECT_THAT(warnings(), testing::HasSubstr("element StackupZone is not read (6 times)"));
}

// Turned by 0, 45, 82.601, 90, 180 and 270 degrees.
TEST_F(IpcCorpus, ComponentsOfTheBottomStandWithTheirPinsOnTheirPads) {
    open("p01/testcase3-revc-full.xml");
    EXPECT_EQ(pinsOnPads(), std::pair(84, 0));
    open("p02/testcase12-rdgflx-full.xml");
    EXPECT_EQ(pinsOnPads().second, 0);
    EXPECT_GT(pinsOnPads().first, 90);
}

TEST_F(IpcCorpus, ADocumentOfTheStackUpAloneHasItsLayers) {
    open("p02/testcase12-rdgflx-stackup.xml");
    EXPECT_EQ(numConductors(), 6u);
    EXPECT_NEAR(board().getThickness(), stackupHeight() * inch, rounding);
    EXPECT_EQ(board().numComponentPlacements() + board().numVias(1), 0u);
}

TEST_F(IpcCorpus, ADocumentBesideTheSchemaIsReadAsFarAsItGoes) {
    open("p03/led_power_board.xml");
    EXPECT_EQ(board().numLayers(), 3u); // of the five, two are masks, which count in the height alone
    EXPECT_EQ(numConductors(), 2u);
    EXPECT_NEAR(board().getThickness(), stackupHeight() * 1e-3, rounding);
    EXPECT_EQ(board().numComponentPlacements(), fact("Component"));
    EXPECT_EQ(netNames(), netsInText());
    EXPECT_EQ(netNames().size(), fact("LogicalNet"));
    std::size_t numBottom = 0;
    for (auto placed = board().beginPlacements(); placed != board().endPlacements(); ++placed)
        numBottom += placed->isOnBoardTop() ? 0 : 1;
    EXPECT_EQ(numBottom, all("<Component [^>]*layerRef=\"(BOTTOM_COPPER)\"").size());
    EXPECT_EQ(board().numVias(1), all("<Pad [^>]*padstackDefRef=\"(VIA_[^\"]*)\"").size());
    EXPECT_EQ(board().numVias(1), 4u);
    EXPECT_THAT(warnings(), testing::HasSubstr("the holes are those of the pads' stacks"));
}

} // namespace
