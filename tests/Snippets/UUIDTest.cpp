#include "Snippets/UUID.hpp"

#include <gtest/gtest.h>

#include <set>

namespace corvanta {
namespace {

TEST(UUID, IsWrittenInCapitalsWithHyphens) {
    const UUID id(UUID::Bytes{0xf8, 0x1d, 0x4f, 0xae, 0x7d, 0xec, 0x11, 0xd0, 0xa7, 0x65, 0x00, 0xa0, 0xc9,
                              0x1e, 0x6b, 0xf6});
    EXPECT_EQ(id.text(), "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6");
}

TEST(UUID, IsReadInEitherCase) {
    const auto id = UUID::parse("f81d4fae-7dec-11D0-A765-00a0c91e6bf6");
    ASSERT_TRUE(id);
    EXPECT_EQ(id->text(), "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6");
}

TEST(UUID, IsNotReadFromAnythingElse) {
    for (const std::string_view text :
         {"", "F81D4FAE", "F81D4FAE7DEC11D0A76500A0C91E6BF6", "{F81D4FAE-7DEC-11D0-A765-00A0C91E6BF6}",
          "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF", "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF66",
          "G81D4FAE-7DEC-11D0-A765-00A0C91E6BF6", "F81D4FAE-7DEC-11D0-A765-00A0C91E6BF ",
          "-81D4FAE-7DEC-11D0-A765-00A0C91E6BF6", "F81D4FAE+7DEC+11D0+A765+00A0C91E6BF6",
          "F81D4FA-E7DEC-11D0-A765-00A0C91E6BF6"})
        EXPECT_FALSE(UUID::parse(text)) << text;
}

TEST(UUID, IsRandomUnlessGiven) {
    std::set<UUID> ids;
    for (int i = 0; i < 100; ++i) {
        const UUID id;
        EXPECT_EQ(id.text()[14], '4') << "the version";
        EXPECT_NE(std::string_view("89AB").find(id.text()[19]), std::string_view::npos) << "the variant";
        ids.insert(id);
    }
    EXPECT_EQ(ids.size(), 100U);
}

} // namespace
} // namespace corvanta
