#include "Preview/gtk/SandboxProbe.hpp"

#include "Support/TemporaryFolder.hpp"

#include <glibmm/miscutils.h>
#include <gtest/gtest.h>

#include <string>

namespace corvanta {
namespace {

class SandboxProbeTest : public testing::Test {
protected:
    void TearDown() override { Glib::setenv("PATH", path); }

    /// Puts a helper of that name first that does nothing but end with `status`.
    void replaceHelper(const std::string& name, int status) {
        folder.write(name, "#!/bin/sh\nexit " + std::to_string(status) + "\n");
        std::filesystem::permissions(folder / name, std::filesystem::perms::owner_all);
        Glib::setenv("PATH", folder.path().string() + ":" + path);
    }

    TemporaryFolder folder;
    std::string path = Glib::getenv("PATH");
};

TEST_F(SandboxProbeTest, FindsWorkingHelpers) {
    EXPECT_TRUE(SandboxProbe::works());
}

TEST_F(SandboxProbeTest, FindsThatAHelperIsMissing) {
    Glib::setenv("PATH", folder.path().string());
    EXPECT_FALSE(SandboxProbe::works());
}

TEST_F(SandboxProbeTest, FindsThatAHelperMayNotWork) {
    replaceHelper("bwrap", 1);
    EXPECT_FALSE(SandboxProbe::works());
}

TEST_F(SandboxProbeTest, NeedsBothHelpers) {
    replaceHelper("xdg-dbus-proxy", 1);
    EXPECT_FALSE(SandboxProbe::works());
}

} // namespace
} // namespace corvanta
