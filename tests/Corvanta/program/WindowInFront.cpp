#include "WindowInFront.hpp"

#include "Support/screen/ObservedScreen.hpp"

#include <gdk/gdk.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <stdexcept>
#include <vector>

namespace corvanta {

namespace {

using namespace std::chrono_literals;

/// Fewer pixels of a colour are nothing that anybody looks for.
constexpr auto fewestPixels = 100;

/// How far inside a coloured area is surely in it, also where its corner is round.
constexpr int insideOfCorner = 4;

Rectangle areaOfFront(ObservedScreen& screen) {
    const auto window = screen.activeWindow();
    if (!window)
        throw std::runtime_error("no window is in front");
    return screen.area(*window);
}

bool holds(const Picture& picture, std::uint32_t color) {
    return std::ranges::count(picture.pixels, color) >= fewestPixels;
}

} // namespace

WindowInFront::WindowInFront()
    : screen_(std::make_unique<ObservedScreen>()), seen_(std::make_unique<Picture>()) {}

WindowInFront::~WindowInFront() = default;

bool WindowInFront::shows(std::uint32_t color) {
    return holds(screen_->capture(areaOfFront(*screen_)), color);
}

void WindowInFront::lookAt(Part part) {
    *seen_ = screen_->capture((part == Part::text ? textPane : previewPane).within(areaOfFront(*screen_)));
}

bool WindowInFront::looksOtherwise() {
    return screen_->capture(seen_->area) != *seen_;
}

bool WindowInFront::clickInto(std::uint32_t color) {
    const Picture picture = screen_->capture(areaOfFront(*screen_));
    if (!holds(picture, color))
        return false;
    const auto width = static_cast<std::size_t>(picture.area.width);
    const auto first =
        static_cast<std::size_t>(std::ranges::find(picture.pixels, color) - picture.pixels.begin());
    const std::size_t row = first / width;
    std::size_t last = first;
    while (last + 1 < (row + 1) * width && picture.pixels[last + 1] == color)
        ++last;
    screen_->click(picture.area.x + static_cast<int>(last % width) - insideOfCorner,
                   picture.area.y + static_cast<int>(row) + insideOfCorner);
    return true;
}

void WindowInFront::clickBelowTop(int distance) {
    const Rectangle area = areaOfFront(*screen_);
    screen_->click(area.x + area.width / 2, area.y + distance);
}

void WindowInFront::keepPicture(const std::filesystem::path& path) {
    screen_->waitForSilence(200ms, 5s);
    const Picture picture = screen_->capture(areaOfFront(*screen_));
    constexpr std::size_t bytesAPixel = 3;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(picture.pixels.size() * bytesAPixel);
    for (const std::uint32_t pixel : picture.pixels) {
        for (const unsigned shift : {16U, 8U, 0U})
            bytes.push_back(static_cast<std::uint8_t>(pixel >> shift));
    }
    GBytes* data = g_bytes_new(bytes.data(), bytes.size());
    GdkTexture* texture =
        gdk_memory_texture_new(picture.area.width, picture.area.height, GDK_MEMORY_R8G8B8, data,
                               static_cast<std::size_t>(picture.area.width) * bytesAPixel);
    const bool isSaved = gdk_texture_save_to_png(texture, path.c_str()) != FALSE;
    g_object_unref(texture);
    g_bytes_unref(data);
    if (!isSaved)
        throw std::runtime_error("the picture cannot be saved");
}

} // namespace corvanta
