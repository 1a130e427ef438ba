// The PiPL the build writes (the Linux sidecar; the same bytes are the Windows resource) in the
// layout After Effects reads, and the version the build and the effect both state.

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "shell/EffectInfo.h"

namespace {

std::uint32_t le32(const std::vector<unsigned char>& b, std::size_t at)
{
    return std::uint32_t(b[at]) | std::uint32_t(b[at + 1]) << 8 | std::uint32_t(b[at + 2]) << 16 |
           std::uint32_t(b[at + 3]) << 24;
}

// Properties in stored order: key (as read, not byte-reversed) and data of the stored length.
std::vector<std::pair<std::string, std::vector<unsigned char>>> readProperties(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<unsigned char> b((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::vector<std::pair<std::string, std::vector<unsigned char>>> props;
    if (b.size() < 10 || b[0] != 1 || b[1] != 0) {
        return props;
    }
    const std::uint32_t count = le32(b, 6);
    std::size_t at = 10;
    for (std::uint32_t i = 0; i < count && at + 16 <= b.size(); ++i) {
        EXPECT_EQ(std::string(b.begin() + at, b.begin() + at + 4), "MIB8");
        const std::string key(b.rbegin() + (b.size() - at - 8), b.rbegin() + (b.size() - at - 4));
        const std::uint32_t length = le32(b, at + 12);
        props.emplace_back(key, std::vector<unsigned char>(b.begin() + at + 16, b.begin() + at + 16 + length));
        at += 16 + (length + 3) / 4 * 4;
    }
    EXPECT_EQ(at, b.size());
    return props;
}

TEST(ResourceDescription, ListsAnEffectsPropertiesInTheHostsOrder)
{
    const auto props = readProperties(std::string(ORBIVANE_BINARY_DIR) + "/Orbivane.pipl");
    std::vector<std::string> keys;
    for (const auto& p : props) {
        keys.push_back(p.first);
    }
    EXPECT_EQ(keys, (std::vector<std::string>{"kind", "name", "catg", "8664", "ePVR", "eSVR", "eVER", "eINF",
                                              "eGLO", "eGL2", "eMNA", "aeFL"}));
    ASSERT_EQ(props.size(), 12u);
    EXPECT_EQ(le32(props[0].second, 0), 0x65464B54u);  // 'eFKT'
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(props[3].second.data())), "EntryPointFunc");
    EXPECT_EQ(le32(props[4].second, 0), 2u) << "PiPL version 2.0";
    EXPECT_EQ(le32(props[5].second, 0), 13u | 29u << 16);
    EXPECT_EQ(props[7].second, (std::vector<unsigned char>{0, 0})) << "info flags: 16 bits, stored length 2";
    EXPECT_EQ(le32(props[11].second, 0), 8u) << "AE_Reserved_Info";
    const auto& category = props[2].second;
    EXPECT_EQ(std::string(category.begin() + 1, category.begin() + 1 + category[0]), "Orbivane");
}

TEST(ResourceDescription, BuildVersionIsTheEffectsVersion)
{
    const std::string effect = std::to_string(effect_info::kMajorVersion) + "." +
                               std::to_string(effect_info::kMinorVersion) + "." +
                               std::to_string(effect_info::kBugVersion);
    EXPECT_EQ(effect, ORBIVANE_PROJECT_VERSION) << "project(... VERSION) and shell/EffectInfo.h disagree";
}

}  // namespace
