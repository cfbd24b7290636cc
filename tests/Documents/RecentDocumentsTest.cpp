#include "Documents/RecentDocuments.hpp"

#include "Support/InMemoryUserDefaults.hpp"

#include <gtest/gtest.h>

#include <string>

namespace corvanta {
namespace {

using Files = std::vector<std::filesystem::path>;

TEST(RecentDocumentsTest, HasTheLastOneFirstAndEachOnce) {
    InMemoryUserDefaults defaults;
    RecentDocuments recent(defaults);
    EXPECT_EQ(recent.files(), Files());
    for (const char* file : {"/a.html", "/b.html", "/a.html"})
        recent.add(file);
    EXPECT_EQ(recent.files(), (Files{"/a.html", "/b.html"}));
    recent.remove("/a.html");
    EXPECT_EQ(recent.files(), Files{"/b.html"});
    recent.clear();
    EXPECT_EQ(recent.files(), Files());
}

TEST(RecentDocumentsTest, ForgetsTheOldest) {
    InMemoryUserDefaults defaults;
    RecentDocuments recent(defaults);
    for (int i = 0; i < 12; ++i)
        recent.add("/" + std::to_string(i));
    EXPECT_EQ(recent.files().size(), RecentDocuments::longest);
    EXPECT_EQ(recent.files().front(), "/11");
    EXPECT_EQ(recent.files().back(), "/2");
}

TEST(RecentDocumentsTest, KeepsNoNameThatTheDefaultsCannotHold) {
    InMemoryUserDefaults defaults;
    RecentDocuments recent(defaults);
    recent.add("/\xff.html");
    EXPECT_EQ(recent.files(), Files());
    defaults.set(RecentDocuments::key, 3.0);
    EXPECT_EQ(recent.files(), Files());
}

} // namespace
} // namespace corvanta
