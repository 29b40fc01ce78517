// Nets and their order on a layer.
#include "model/EDABoardLayer.h"
#include "text/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace EDA {
namespace {

using ::testing::ElementsAre;

EDANet netNamed(std::string const &name, int id = 0) {
    EDANet net;
    net.setName(name);
    net.setGlobalId(id);
    return net;
}

EDABoardLayer layerWithNets(std::vector<std::string> const &names) {
    EDABoardLayer layer;
    for (auto const &name : names)
        layer.addNet(netNamed(name));
    return layer;
}

std::vector<std::string> namesOf(EDABoardLayer const &layer) {
    std::vector<std::string> names;
    for (auto net = layer.beginNets(); net != layer.endNets(); ++net)
        names.push_back(net->getName());
    return names;
}

TEST(EDANet, StartsEmpty) {
    EDANet const net;
    EXPECT_EQ(net.getGlobalId(), 0);
    EXPECT_EQ(net.getLocalId(), 0);
    EXPECT_EQ(net.getName(), "");
    EXPECT_EQ(net.numTraces(), 0u);
    EXPECT_TRUE(net.beginTraces() == net.endTraces());
    EXPECT_TRUE(std::has_virtual_destructor_v<EDANet>);
}

TEST(EDANet, KeepsIdsAndNameAndHandsOutReferencesToTheIds) {
    EDANet net;
    net.setGlobalId(7);
    net.setLocalId(8);
    net.setName("GND");
    int const &globalId = net.getGlobalId();
    int const &localId = net.getLocalId();
    net.setGlobalId(9);
    EXPECT_EQ(globalId, 9);
    EXPECT_EQ(localId, 8);
    EXPECT_EQ(net.getName(), "GND");
}

TEST(EDANet, AddTraceReturnsTheStoredCopy) {
    EDANet net;
    EDATrace trace;
    trace.setName("A");
    net.addTrace(trace)->setName("B");
    EXPECT_EQ(trace.getName(), "A");
    EXPECT_EQ(net.beginTraces()->getName(), "B");
    auto const *second = net.addTrace(EDATrace());
    EXPECT_EQ(second, &*(net.endTraces() - 1));
    EXPECT_EQ(net.numTraces(), 2u);
}

TEST(EDABoardLayerNets, AreSortedWithoutRegardToCase) {
    auto layer = layerWithNets({"b", "A", "C"});
    EXPECT_EQ(layer.numNets(), 3u);
    EXPECT_EQ(layer.getNthNet(0).getName(), "A");
    EXPECT_EQ(layer.getNthNet(1).getName(), "b");
    EXPECT_EQ(std::as_const(layer).getNthNet(2).getName(), "C");
    EXPECT_THAT(namesOf(layer), ElementsAre("A", "b", "C"));
}

TEST(EDABoardLayerNets, APrefixStandsBeforeTheLongerName) {
    EXPECT_THAT(namesOf(layerWithNets({"NET10", "NET1", "", "NET"})),
                ElementsAre("", "NET", "NET1", "NET10"));
}

TEST(EDABoardLayerNets, LettersBeyondAsciiAreUpperCasedToo) {
    // Small a with diaeresis sorts as the capital, which comes before capital B with dot (U+1E02).
    EXPECT_THAT(namesOf(layerWithNets({"\xE1\xB8\x82", "\xC3\xA4z", "\xC3\x84y"})),
                ElementsAre("\xC3\x84y", "\xC3\xA4z", "\xE1\xB8\x82"));
}

TEST(EDABoardLayerNets, InvalidBytesSortAsUnsignedBytes) {
    EXPECT_THAT(namesOf(layerWithNets({"\xFF", "z", "\x01"})), ElementsAre("\x01", "z", "\xFF"));
}

TEST(EDABoardLayerNets, EqualNamesKeepTheOrderOfAdding) {
    EDABoardLayer layer;
    layer.addNet(netNamed("x", 1));
    layer.addNet(netNamed("X", 2));
    layer.addNet(netNamed("a", 3));
    layer.addNet(netNamed("x", 4));
    EXPECT_EQ(layer.getNthNet(1).getGlobalId(), 1);
    EXPECT_EQ(layer.getNthNet(2).getGlobalId(), 2);
    EXPECT_EQ(layer.getNthNet(3).getGlobalId(), 4);
}

TEST(EDABoardLayerNets, ABadIndexThrows) {
    auto layer = layerWithNets({"a"});
    EXPECT_THROW(layer.getNthNet(1), std::out_of_range);
    EXPECT_THROW(layer.getNthNet(-1), std::out_of_range);
    EXPECT_THROW(std::as_const(layer).getNthNet(1), std::out_of_range);
    EXPECT_THROW(EDABoardLayer().getNthNet(0), std::out_of_range);
}

TEST(EDABoardLayerNets, AreFoundByExactName) {
    auto layer = layerWithNets({"gnd", "GND", "VCC"});
    ASSERT_NE(layer.findNet("GND"), nullptr);
    EXPECT_EQ(layer.findNet("GND")->getName(), "GND");
    EXPECT_EQ(layer.findNet("gnd")->getName(), "gnd");
    EXPECT_EQ(layer.findNet("Gnd"), nullptr);
    EXPECT_EQ(layer.findNet(""), nullptr);
    EXPECT_EQ(layer.findNet("VCC"), &layer.getNthNet(2));
}

TEST(EDABoardLayerNets, TheFirstOfEqualNamesIsFound) {
    EDABoardLayer layer;
    layer.addNet(netNamed("n", 1));
    layer.addNet(netNamed("n", 2));
    EXPECT_EQ(layer.findNet("n")->getGlobalId(), 1);
}

TEST(EDABoardLayerNets, AreFoundAfterEachAddition) {
    EDABoardLayer layer;
    for (int i = 0; i < 100; ++i) {
        auto const name = "n" + std::to_string(i * 37 % 100);
        EXPECT_EQ(layer.findNet(name), nullptr);
        layer.addNet(netNamed(name, i));
        ASSERT_NE(layer.findNet(name), nullptr);
        EXPECT_EQ(layer.findNet(name)->getGlobalId(), i);
    }
}

TEST(EDABoardLayerNets, APointerFromASearchOutlivesReadingInOrder) {
    auto layer = layerWithNets({"b", "a"});
    auto *net = layer.findNet("b");
    EXPECT_THAT(namesOf(layer), ElementsAre("a", "b"));
    net->addTrace(EDATrace());
    EXPECT_EQ(layer.getNthNet(1).numTraces(), 1u);
}

TEST(EDABoardLayerNets, ARenamedNetKeepsItsPlaceUntilTheNextAddition) {
    auto layer = layerWithNets({"b", "A"});
    layer.findNet("A")->setName("z");
    EXPECT_THAT(namesOf(layer), ElementsAre("z", "b"));
    EXPECT_EQ(layer.findNet("A"), nullptr);
    EXPECT_EQ(layer.findNet("z"), &layer.getNthNet(0));
    layer.addNet(netNamed("c"));
    EXPECT_THAT(namesOf(layer), ElementsAre("b", "c", "z"));
    EXPECT_EQ(layer.findNet("z"), &layer.getNthNet(2));
}

TEST(EDABoardLayerNets, ANetRenamedToAnotherNameIsFoundInOrder) {
    auto layer = layerWithNets({"b", "a"});
    layer.getNthNet(0).setGlobalId(5);
    layer.getNthNet(0).setName("b");
    EXPECT_EQ(layer.findNet("b")->getGlobalId(), 5);
}

TEST(EDABoardLayerNets, ACopiedLayerHasNetsOfItsOwn) {
    auto layer = layerWithNets({"b", "a"});
    ASSERT_NE(layer.findNet("a"), nullptr);
    auto copy = layer;
    copy.findNet("a")->setName("q");
    copy.addNet(netNamed("c"));
    EXPECT_THAT(namesOf(layer), ElementsAre("a", "b"));
    EXPECT_THAT(namesOf(copy), ElementsAre("b", "c", "q"));
    EXPECT_NE(layer.findNet("a"), nullptr);
    layer = copy;
    EXPECT_EQ(layer.findNet("a"), nullptr);
    EXPECT_NE(layer.findNet("q"), copy.findNet("q"));
}

TEST(EDABoardLayerNets, IteratorsGoBothWays) {
    auto const layer = layerWithNets({"b", "a", "c"});
    auto net = layer.endNets();
    EXPECT_EQ((--net)->getName(), "c");
    EXPECT_EQ((*net--).getName(), "c");
    EXPECT_EQ(net->getName(), "b");
    EXPECT_EQ((net++)->getName(), "b");
    EXPECT_EQ(std::distance(layer.beginNets(), layer.endNets()), 3);
    EXPECT_TRUE(NetList::Iterator() == NetList::Iterator());
}

TEST(EDABoardLayerNets, OrderIsThatOfAStableSort) {
    unsigned const seed = 20231;
    RecordProperty("seed", static_cast<int>(seed));
    std::mt19937 random(seed);
    EDABoardLayer layer;
    std::vector<std::pair<std::string, int>> expected;
    for (int i = 0; i < 2000; ++i) {
        std::string name;
        for (unsigned length = random() % 4; name.size() < length;)
            name += "aAbBzZ_"[random() % 7];
        layer.addNet(netNamed(name, i));
        expected.emplace_back(name, i);
        if (random() % 50 == 0) layer.beginNets();
    }
    std::stable_sort(expected.begin(), expected.end(),
                     [](auto const &a, auto const &b) { return lessIgnoreCase(a.first, b.first); });
    auto net = layer.beginNets();
    for (auto const &each : expected) {
        ASSERT_EQ(net->getGlobalId(), each.second);
        ++net;
    }
    EXPECT_TRUE(net == layer.endNets());
}

TEST(EDABoardLayerNets, ManyNetsAreAddedAndSearchedQuickly) {
    // In reverse order, with a search before each addition, as a reader does. A list that moves
    // its nets, or searches them one by one, takes minutes here.
    EDABoardLayer layer;
    int const count = 200000;
    int missing = 0;
    for (int i = count; i > 0; --i) {
        auto const name = "net" + std::to_string(1000000 + i);
        missing += layer.findNet(name) == nullptr;
        layer.addNet(netNamed(name));
    }
    EXPECT_EQ(missing, count);
    EXPECT_EQ(layer.getNthNet(0).getName(), "net1000001");
}

} // namespace
} // namespace EDA
