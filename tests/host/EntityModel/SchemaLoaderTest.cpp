// Errors in a schema text.
#include "host/EntityModel/SchemaLoader.h"
#include "host/EntityModel/Attribute.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace EntityModel;

namespace {

std::string errorOf(const std::string &text) {
    try {
        SchemaLoader::load(text);
    } catch (const std::logic_error &error) {
        return error.what();
    }
    return "";
}

std::string withAttribute(const std::string &attribute) {
    return R"({"types":[{"name":"T","attributes":[)" + attribute + "]}]}";
}

struct Row {
    const char *attribute;
    const char *error;
};

const Row badAttributes[] = {
    {R"({"kind":"text"})", "Entity schema: T: a text is expected at \"name\""},
    {R"({"name":"","kind":"text"})", "Entity schema: T/: the label is empty"},
    {R"({"name":"A"})", "Entity schema: T/A: a text is expected at \"kind\""},
    {R"({"name":"A","kind":"texts"})", "Entity schema: T/A: unknown kind \"texts\""},
    {R"({"name":"A","kind":"text","colour":"red"})", "Entity schema: T: unknown key \"colour\""},
    {R"({"name":"A","kind":"number"})", "Entity schema: T/A: a text is expected at \"quantity\""},
    {R"({"name":"A","kind":"number","quantity":"Smell"})", "Entity schema: T/A: unknown quantity \"Smell\""},
    {R"({"name":"A","kind":"number","quantity":"Power","unit":"mm"})",
     "Entity schema: T/A: unknown unit \"mm\""},
    {R"({"name":"A","kind":"length","quantity":"Power"})",
     "Entity schema: T/A: \"quantity\" does not fit the kind"},
    {R"({"name":"A","kind":"length","default":"-1 mm"})",
     "Entity schema: T/A: cannot have the default \"-1 mm\""},
    {R"({"name":"A","kind":"choice"})", "Entity schema: T/A: a list is expected at \"choices\""},
    {R"({"name":"A","kind":"choice","choices":[]})", "Entity schema: T/A: \"choices\" is empty"},
    {R"({"name":"A","kind":"choice","choices":[1]})",
     "Entity schema: T/A: texts are expected in \"choices\""},
    {R"({"name":"A","kind":"choice","choices":["x"],"default":"y"})",
     "Entity schema: T/A: cannot have the default \"y\""},
    {R"({"name":"A","kind":"yesNo","default":"maybe"})",
     "Entity schema: T/A: cannot have the default \"maybe\""},
    {R"({"name":"A","kind":"text","choices":["x"]})",
     "Entity schema: T/A: \"choices\" does not fit the kind"},
    {R"({"name":"A","kind":"entityList"})", "Entity schema: T/A: a list is expected at \"takes\""},
    {R"({"name":"A","kind":"entityList","takes":["U"]})", "Entity schema: T/A: takes the unknown type \"U\""},
    {R"({"name":"A","kind":"group"})", "Entity schema: T/A: a list is expected at \"members\""},
    {R"({"name":"A","kind":"attributeList","quantity":"Length"})",
     "Entity schema: T/A: a text is expected at \"element\""},
    {R"({"name":"A","kind":"text"},{"name":"A","kind":"text"})",
     "Entity schema: T/A: the label \"A\" is there twice"},
    {R"({"name":"A","kind":"text"},{"name":"B","aliases":["A"],"kind":"text"})",
     "Entity schema: T/B: the label \"A\" is there twice"},
    {R"({"name":"A","kind":"composite","members":[{"name":"B","kind":"group","members":[]}]})",
     "Entity schema: T/B: does not fit into a composite"},
    {R"({"name":"A","kind":"text","hidden":"yes"})",
     "Entity schema: T/A: true or false is expected at \"hidden\""},
    {R"({"name":"A","kind":"text","enabledWhen":{"is":"x"}})",
     "Entity schema: T/A: a text is expected at \"attribute\""},
    {R"({"name":"A","kind":"text","enabledWhen":{"attribute":"B","is":"x"}},{"name":"B","kind":"text"})",
     "Entity schema: T/A: is enabled by what is no choice"},
    {R"("M")", "Entity schema: T: unknown mixin \"M\""},
    {R"(7)", "Entity schema: T: an object is expected"},
};

} // namespace

TEST(SchemaLoader, BuiltInSchemaLoads) {
    EXPECT_EQ(errorOf(std::string(SchemaLoader::builtIn())), "");
    EXPECT_EQ(Schema::instance().types().size(), 39u);
}

TEST(SchemaLoader, BadAttributesAreNamed) {
    for (const Row &row : badAttributes)
        EXPECT_EQ(errorOf(withAttribute(row.attribute)), row.error);
}

TEST(SchemaLoader, BadFilesAreRefused) {
    EXPECT_NE(errorOf("").find("Entity schema: The document is empty"), std::string::npos);
    EXPECT_NE(errorOf("{\"types\":[").find("At byte 10"), std::string::npos);
    EXPECT_EQ(errorOf("[]"), "Entity schema: an object is expected");
    EXPECT_EQ(errorOf("{}"), "Entity schema: a list is expected at \"types\"");
    EXPECT_EQ(errorOf(R"({"types":[],"extra":1})"), "Entity schema: unknown key \"extra\"");
    EXPECT_EQ(errorOf(R"({"types":[{"name":"T","attributes":[]},{"name":"T","attributes":[]}]})"),
              "Entity schema: T: the type is there twice");
}

TEST(SchemaLoader, MixinThatHoldsItselfIsRefused) {
    EXPECT_EQ(errorOf(R"({"mixins":{"M":["M"]},"types":[{"name":"T","attributes":["M"]}]})"),
              "Entity schema: T: mixins or groups are nested too deeply");
}

TEST(SchemaLoader, BadDefaultsAndDefaultChildrenAreRefused) {
    EXPECT_EQ(errorOf(R"({"types":[{"name":"T","attributes":[],"defaults":{"A":"1"}}]})"),
              "Entity schema: T: a default for the unknown attribute \"A\"");
    EXPECT_EQ(errorOf(R"({"types":[{"name":"T","attributes":[{"name":"A","kind":"length"}],
                          "defaults":{"A":"x"}}]})"),
              "Entity schema: T/A: cannot have the default \"x\"");
    EXPECT_EQ(errorOf(R"({"types":[{"name":"T","attributes":[],
                          "defaultChildren":[{"list":"L","type":"T","name":"n"}]}]})"),
              "Entity schema: T: the default child \"n\" has no place");
}

TEST(SchemaLoader, MixinsStandForTheirAttributes) {
    const auto schema = SchemaLoader::load(R"({
        "everyType": [{"name": "Name", "kind": "text"}],
        "mixins": {"Size": [{"name": "Width", "kind": "length"}], "All": ["Size", {"name": "B", "kind": "yesNo"}]},
        "types": [{"name": "T", "attributes": [{"name": "G", "kind": "group", "members": ["All"]}],
                   "defaults": {"Width": "2 in"}}]})");
    const EntityType &type = *schema->find(TypeRef("T"));
    ASSERT_EQ(type.attributes().size(), 4u);
    EXPECT_EQ(type.find(TypeRef("Width"))->group, 1);
    std::string text;
    EXPECT_EQ(type.find(TypeRef("Width"))->defaultAttribute->getString(text), "2 in");
    EXPECT_EQ(type.find(TypeRef("B"))->index, 3);
}
