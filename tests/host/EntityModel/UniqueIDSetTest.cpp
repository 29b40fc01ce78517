// Names made unique.
#include "host/EntityModel/UniqueIDSet.h"

#include <gtest/gtest.h>

#include <set>

using EntityModel::UniqueIDSet;

TEST(UniqueIDSet, FirstNameStaysAndLaterOnesAreNumbered) {
    UniqueIDSet set;
    EXPECT_EQ(set.addUnique("via"), "via");
    EXPECT_EQ(set.addUnique("via"), "via-1");
    EXPECT_EQ(set.addUnique("via"), "via-2");
    EXPECT_EQ(set.addUnique("pad"), "pad");
}

TEST(UniqueIDSet, NumberedNamesThatAreTakenArePassedOver) {
    UniqueIDSet set;
    EXPECT_EQ(set.addUnique("via-1"), "via-1");
    EXPECT_EQ(set.addUnique("via"), "via");
    EXPECT_EQ(set.addUnique("via"), "via-2");
    EXPECT_EQ(set.addUnique("via-1"), "via-1-1");
}

TEST(UniqueIDSet, EmptyNameIsANameLikeAnother) {
    UniqueIDSet set;
    EXPECT_EQ(set.addUnique(""), "");
    EXPECT_EQ(set.addUnique(""), "-1");
}

TEST(UniqueIDSet, ResultMayBeTheCandidate) {
    UniqueIDSet set;
    std::string name = "Via3";
    set.addUnique(name, name);
    EXPECT_EQ(name, "Via3");
    set.addUnique(name, name);
    EXPECT_EQ(name, "Via3-1");
}

TEST(UniqueIDSet, CopyGoesItsOwnWay) {
    UniqueIDSet set;
    set.addUnique("a");
    UniqueIDSet copy(set);
    EXPECT_EQ(copy.addUnique("a"), "a-1");
    EXPECT_EQ(set.addUnique("a"), "a-1");
    copy = set;
    EXPECT_EQ(copy.addUnique("a"), "a-2");
}

TEST(UniqueIDSet, ManyEqualNamesStayLinear) {
    UniqueIDSet set;
    std::set<std::string> seen;
    for (int i = 0; i < 200000; ++i)
        seen.insert(set.addUnique("Via3"));
    EXPECT_EQ(seen.size(), 200000u);
}
