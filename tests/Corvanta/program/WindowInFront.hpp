#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

namespace corvanta {

class ObservedScreen;
struct Picture;

/// The window in front as its user has it: seen by its pixels and clicked with the mouse. The X server's own
/// headers define words that the test framework uses, so they are kept in here.
class WindowInFront {
public:
    WindowInFront();
    WindowInFront(const WindowInFront&) = delete;
    WindowInFront& operator=(const WindowInFront&) = delete;
    ~WindowInFront();

    /// Whether there is enough of a colour (0xRRGGBB) in it to be noticed.
    bool shows(std::uint32_t color);

    enum class Part { text, page };

    /// Looks at the text on the left, or at the page on the right but for the start of its lines.
    void lookAt(Part part);

    /// Whether this part looks otherwise than at the last `lookAt`.
    bool looksOtherwise();

    /// Clicks into the upper right corner of what has this colour; false when nothing has.
    bool clickInto(std::uint32_t color);

    /// Clicks in its middle, this many pixels below its upper edge.
    void clickBelowTop(int distance);

    /// Saves a picture of it as PNG at `path`, whose folder there must be, when it has been drawn, but waits
    /// no longer than some seconds for that.
    void keepPicture(const std::filesystem::path& path);

private:
    std::unique_ptr<ObservedScreen> screen_;
    std::unique_ptr<Picture> seen_;
};

} // namespace corvanta
