// AEO::String on host memory (its AEO::Vector storage is also held by RenderInfoLightsTest.*),
// and the UTF-16 to UTF-8 conversion.

#include <gtest/gtest.h>

#include <string>

#include "AE_MyLib/AEObject/AEO_String.h"
#include "AE_MyLib/AEObject/AEO_Vector.h"
#include "AE_MyLib/AEObject/HostedCommand.h"

namespace {

TEST(String, AssignsAndAppendsWithATerminator)
{
    hosted::HostedCommand command;
    AEO::InData in_data(command.in());
    AEO::String<char> s(&in_data);
    EXPECT_STREQ(s.c_str(), "");
    ASSERT_TRUE(s.assign("thisComp"));
    ASSERT_TRUE(s.append(".layer(\""));
    EXPECT_STREQ(s.c_str(), "thisComp.layer(\"");
    EXPECT_EQ(s.size(), 16u);
    ASSERT_TRUE(s.assign("x"));
    EXPECT_STREQ(s.c_str(), "x");
    EXPECT_EQ(s.size(), 1u);

    AEO::String<char16_t> wide(&in_data);  // keeps its code units
    ASSERT_TRUE(wide.assign(u"Light 1"));
    EXPECT_EQ(std::u16string(wide.c_str()), u"Light 1");
    EXPECT_EQ(wide.size(), 7u);
}

TEST(String, TextBuiltACharacterAtATimeCostsFewHostAllocations)
{
    hosted::HostedCommand command;
    AEO::InData in_data(command.in());
    AEO::String<char> s(&in_data);
    for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(s.append('a' + i % 26));
    }
    EXPECT_EQ(s.size(), 200u);
    EXPECT_EQ(s.c_str()[199], 'a' + 199 % 26);
    EXPECT_LE(command.host().counters().total(host::Resource::Handle), 10) << "storage grows geometrically";
}

std::string utf8(const char16_t* text)
{
    hosted::HostedCommand command;
    AEO::InData in_data(command.in());
    AEO::String<char> out(&in_data);
    EXPECT_TRUE(AEO::appendUtf8(out, text));
    return out.c_str();
}

TEST(Utf8, EncodesEachRangeOfCodePointsAndReplacesLoneSurrogates)
{
    const char16_t high_alone[] = {0xD83D, u'a', 0};
    const char16_t low_alone[] = {0xDE00, 0};
    const struct {
        const char16_t* text;
        const char* utf8;
    } cases[] = {
        {u"Null 2", "Null 2"},
        {u"Cam\u00E9ra", "Cam\xC3\xA9ra"},        // two bytes
        {u"\u20AC", "\xE2\x82\xAC"},               // three bytes
        {u"\U0001F600", "\xF0\x9F\x98\x80"},       // surrogate pair, four bytes
        {u"", ""},
        {high_alone, "\xEF\xBF\xBD" "a"},
        {low_alone, "\xEF\xBF\xBD"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(utf8(c.text), c.utf8) << "expected " << c.utf8;
    }
}

}  // namespace
