// The whole program on Wayland, drawn by OpenGL; all other tests have X11 and the processor draw.

#include "StartedProgram.hpp"
#include "Support/TemporaryFolder.hpp"
#include "Support/gtk/MainLoop.hpp"
#include "WaylandSession.hpp"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

TEST(WaylandTest, ShowsThePageAndWhatBecomesOfIt) {
    const TemporaryFolder folder;
    const TemporaryFolder state;
    folder.write("index.html", "<body style='background: #e01bd0'>eins</body>");
    const WaylandSession session;
    StartedProgram program(state.path(), {folder / "index.html"}, session.environment());
    EXPECT_TRUE(waitUntil([&] { return session.shows(0xe01bd0); }));

    // The window follows another program's changes.
    folder.write("index.html", "<body style='background: #1be0d0'>zwei</body>");
    EXPECT_TRUE(waitUntil([&] { return session.shows(0x1be0d0); }));
}

} // namespace
} // namespace corvanta
