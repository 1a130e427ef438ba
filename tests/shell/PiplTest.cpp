// The resource description written beside the module must agree with what the module
// reports at global set-up.

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace {

std::uint32_t le32(const std::vector<unsigned char>& b, std::size_t at)
{
    return std::uint32_t(b[at]) | std::uint32_t(b[at + 1]) << 8 | std::uint32_t(b[at + 2]) << 16 |
           std::uint32_t(b[at + 3]) << 24;
}

// Properties by key, read from the little-endian layout.
std::map<std::string, std::vector<unsigned char>> readProperties(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<unsigned char> b((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::map<std::string, std::vector<unsigned char>> props;
    if (b.size() < 10 || b[0] != 1 || b[1] != 0) {
        return props;
    }
    const std::uint32_t count = le32(b, 6);
    std::size_t at = 10;
    for (std::uint32_t i = 0; i < count && at + 16 <= b.size(); ++i) {
        EXPECT_EQ(std::string(b.begin() + at, b.begin() + at + 4), "MIB8");
        const std::string key(b.rbegin() + (b.size() - at - 8), b.rbegin() + (b.size() - at - 4));
        const std::uint32_t length = le32(b, at + 12);
        EXPECT_EQ(length % 4, 0u) << key;
        props[key] = std::vector<unsigned char>(b.begin() + at + 16, b.begin() + at + 16 + length);
        at += 16 + length;
    }
    EXPECT_EQ(at, b.size());
    return props;
}

TEST(ResourceDescription, AgreesWithTheModule)
{
    auto props = readProperties(std::string(ORBIVANE_BINARY_DIR) + "/Orbivane.pipl");
    ASSERT_FALSE(props.empty());
    EXPECT_EQ(le32(props["kind"], 0), 0x65464B54u);  // 'eFKT'
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(props["8664"].data())), "EntryPointFunc");
    const auto& name = props["name"];
    EXPECT_EQ(std::string(name.begin() + 1, name.begin() + 1 + name[0]), "Orbivane");
    EXPECT_EQ(le32(props["eVER"], 0), 0x8B601u);
    EXPECT_EQ(le32(props["eGLO"], 0), 0x02000001u);
    EXPECT_EQ(le32(props["eGL2"], 0), 0x08001406u);
    EXPECT_EQ(le32(props["eSVR"], 0), 13u | 29u << 16);
    EXPECT_FALSE(props["eMNA"].empty());
    EXPECT_FALSE(props["catg"].empty());
}

}  // namespace
