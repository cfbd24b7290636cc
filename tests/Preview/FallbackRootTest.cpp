#include "Preview/FallbackRoot.hpp"

#include "Preview/PreviewFileManager.hpp"
#include "Support/InMemoryFileManager.hpp"

#include <gtest/gtest.h>

namespace corvanta {

TEST(FallbackRoot, IsTheFolderThatHoldsTheDocument) {
    InMemoryFileManager files;
    files.links["/desk/page.html"] = "/web/blog/page.html";
    EXPECT_EQ(fallbackRoot("/web/index.html", files), "/web");
    EXPECT_EQ(fallbackRoot("/web/./blog/../index.html", files), "/web");
    EXPECT_EQ(fallbackRoot("/desk/page.html", files), "/web/blog");
}

TEST(FallbackRoot, IsMissingWhenTheFolderCannotBeListed) {
    InMemoryFileManager files;
    files.unlistable.insert("/zu");
    EXPECT_EQ(fallbackRoot("/zu/index.html", files), std::nullopt);
}

TEST(FallbackRoot, IsMissingForAPageSavedStraightIntoTheHomeFolder) {
    const InMemoryFileManager files;
    const PreviewFileManager manager(files, "/home/anna");
    EXPECT_EQ(fallbackRoot("/home/anna/seite.html", manager), std::nullopt);
    EXPECT_EQ(fallbackRoot("/home/anna/web/seite.html", manager), "/home/anna/web");
}

} // namespace corvanta
