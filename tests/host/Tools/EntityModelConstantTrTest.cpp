// Translation of texts.
#include "host/Tools/EntityModelConstantTr.h"

#include <gtest/gtest.h>

using EntityModel::EntityModelConstantTr;

namespace {

struct EnglishAgain {
    ~EnglishAgain() { EntityModelConstantTr::setTranslator({}); }
};

} // namespace

TEST(EntityModelConstantTr, TextIsEnglishWithoutATranslator) {
    EXPECT_EQ(EntityModelConstantTr::tr("Importing Layers..."), QString("Importing Layers..."));
    EXPECT_EQ(EntityModelConstantTr::tr("5 \xC2\xB5m"), QString::fromUtf8("5 \xC2\xB5m"));
}

TEST(EntityModelConstantTr, NullTextIsEmpty) { EXPECT_TRUE(EntityModelConstantTr::tr(nullptr).isEmpty()); }

TEST(EntityModelConstantTr, NumberReplacesItsMark) {
    EXPECT_EQ(EntityModelConstantTr::tr("%n vias", nullptr, 3), QString("3 vias"));
    EXPECT_EQ(EntityModelConstantTr::tr("%n vias"), QString("%n vias"));
}

TEST(EntityModelConstantTr, InstalledTranslatorIsAskedWithAllItIsGiven) {
    const EnglishAgain guard;
    EntityModelConstantTr::setTranslator([](const char *text, const char *note, int number) {
        return QString("%1/%2/%3").arg(text, note).arg(number);
    });
    EXPECT_EQ(EntityModelConstantTr::tr("a", "b", 4), QString("a/b/4"));
    EntityModelConstantTr::setTranslator({});
    EXPECT_EQ(EntityModelConstantTr::tr("a"), QString("a"));
}
