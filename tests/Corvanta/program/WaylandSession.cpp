#include "WaylandSession.hpp"

#include "Platform/gtk/GObjectReference.hpp"
#include "Support/gtk/MainLoop.hpp"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <span>
#include <stdexcept>

namespace corvanta {

namespace {

constexpr const char* socketName = "wayland-test";

/// A fifteenth of a small window.
constexpr int noticeable = 20'000;

pid_t start(std::vector<std::string> words) {
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    pid_t process = -1;
    return ::posix_spawnp(&process, pointers[0], nullptr, nullptr, pointers.data(), environ) == 0 ? process
                                                                                                  : -1;
}

int count(const GdkPixbuf* picture, std::uint32_t color) {
    const auto width = static_cast<std::size_t>(gdk_pixbuf_get_width(picture));
    const auto height = static_cast<std::size_t>(gdk_pixbuf_get_height(picture));
    const auto stride = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(picture));
    const auto channels = static_cast<std::size_t>(gdk_pixbuf_get_n_channels(picture));
    const std::span<const guint8> bytes(gdk_pixbuf_read_pixels(picture), gdk_pixbuf_get_byte_length(picture));
    int found = 0;
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            const std::span<const guint8> pixel = bytes.subspan(y * stride + x * channels, 3);
            if (std::uint32_t{pixel[0]} << 16U == (color & 0xff0000U) &&
                std::uint32_t{pixel[1]} << 8U == (color & 0xff00U) && pixel[2] == (color & 0xffU))
                ++found;
        }
    }
    return found;
}

} // namespace

WaylandSession::WaylandSession() {
    // It asks for a folder that nobody else can look into.
    std::filesystem::permissions(runtime_.path(), std::filesystem::perms::owner_all);
    compositor_ = start({"env", "XDG_RUNTIME_DIR=" + runtime_.path().string(), "weston",
                         "--backend=headless-backend.so", "--use-pixman", "--debug", "--idle-time=0",
                         "--log=" + (runtime_ / "log").string(), "--socket=" + std::string(socketName)});
    if (!waitUntil([this] { return std::filesystem::exists(runtime_ / socketName); }))
        throw std::runtime_error("the Wayland session did not start");
}

WaylandSession::~WaylandSession() {
    ::kill(compositor_, SIGKILL);
    ::waitpid(compositor_, nullptr, 0);
}

std::vector<std::string> WaylandSession::environment() const {
    // The preview's sandbox lets a page's process at the display by its name in this folder only.
    return {"XDG_RUNTIME_DIR=" + runtime_.path().string(), "WAYLAND_DISPLAY=" + std::string(socketName),
            "GDK_BACKEND=wayland", "GSK_RENDERER=gl"};
}

bool WaylandSession::shows(std::uint32_t color) const {
    const TemporaryFolder pictures;
    std::vector<std::string> words{"env", "XDG_PICTURES_DIR=" + pictures.path().string()};
    const std::vector<std::string> session = environment();
    words.insert(words.end(), session.begin(), session.end());
    words.emplace_back("weston-screenshooter");
    const pid_t photographer = start(words);
    ::waitpid(photographer, nullptr, 0);
    return std::ranges::any_of(std::filesystem::directory_iterator(pictures.path()), [&](const auto& file) {
        const GObjectReference<GdkPixbuf> picture(gdk_pixbuf_new_from_file(file.path().c_str(), nullptr));
        return picture && count(picture.get(), color) >= noticeable;
    });
}

} // namespace corvanta
