#include "api/ContentList.h"

#include <gtest/gtest.h>

using namespace orvel;

TEST(ContentListTest, HoldsAtMostTenThousandEntriesOfAnArray)
{
    JsonValue answer = JsonValue::emptyObject();
    EXPECT_TRUE(contentList(answer).empty());
    answer.set("content", JsonValue::array(std::vector<JsonValue>(10'001, 1)));
    EXPECT_EQ(contentList(answer).size(), 10'000u);
    answer.set("content", answer);
    EXPECT_TRUE(contentList(answer).empty());
}
