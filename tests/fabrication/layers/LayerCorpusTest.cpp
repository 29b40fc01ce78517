// Real layer files against facts that another program counted in their text.
#include "fabrication/layers/LayerFile.h"

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using namespace EDA::Fabrication;
using rapidjson::Value;

class NoSink : public LayerSink {
public:
    void flash(Shape const &, Point const &, bool) override {}
    void stroke(Shape const &, Point const &, Segment const &, bool) override {}
    void region(Path const &, bool) override {}
};

std::string contentOf(std::string const &file) {
    std::ifstream stream(std::filesystem::u8path(file), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::size_t countOf(Value const &object, const char *key) {
    return object.HasMember(key) ? object[key].GetUint() : 0;
}

// How often what the text holds is drawn: the one file that repeats has two columns and three rows.
std::size_t copiesOf(Value const &facts) { return facts["SR_count"].GetUint() == 0 ? 1 : 6; }

TEST(LayerCorpus, EveryOperationOfRealFilesArrives) {
    const std::string text = contentOf(std::string(EDA_CORPUS) + "/facts.json");
    if (text.empty()) GTEST_SKIP() << "the corpus is not here";
    rapidjson::Document all;
    all.Parse(text.c_str());
    ASSERT_TRUE(all.IsObject());
    int files = 0;
    for (auto const &entry : all.GetObject()) {
        Value const &facts = entry.value;
        if (!facts.IsObject() || !facts.HasMember("kind") || facts["kind"] != "gerber") continue;
        const std::string name = entry.name.GetString();
        SCOPED_TRACE(name);
        NoSink sink;
        Notes notes;
        const LayerFacts read =
            readLayerFile(contentOf(std::string(EDA_CORPUS) + '/' + name), {}, sink, notes);
        Value const &inRegions = facts["in_regions"];
        const std::size_t copies = copiesOf(facts);
        EXPECT_EQ(read.numStrokes, copies * (countOf(facts, "D01") - countOf(inRegions, "D01")));
        EXPECT_EQ(read.numFlashes, copies * (countOf(facts, "D03") - countOf(inRegions, "D03")));
        EXPECT_GE(read.numRegions, countOf(facts, "regions_G36"));
        EXPECT_EQ(read.numApertures, countOf(facts, "apertures_defined"));
        EXPECT_FALSE(notes.has(NoteKind::LeftOut)) << notes.list().front().what;
        ++files;
    }
    EXPECT_EQ(files, 201);
}

} // namespace
