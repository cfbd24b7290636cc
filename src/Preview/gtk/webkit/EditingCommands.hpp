#pragma once

#include "Preview/gtk/PreviewWebView.hpp"

#include <webkit/webkit.h>

namespace corvanta {

/// The engine's name for `command`.
constexpr const char* editingCommand(PreviewWebView::Command command) {
    switch (command) {
    case PreviewWebView::Command::cut:
        return WEBKIT_EDITING_COMMAND_CUT;
    case PreviewWebView::Command::copy:
        return WEBKIT_EDITING_COMMAND_COPY;
    case PreviewWebView::Command::paste:
        // A page takes over the looks of what it is given, which is no change of a text any more.
        return WEBKIT_EDITING_COMMAND_PASTE_AS_PLAIN_TEXT;
    case PreviewWebView::Command::remove:
        // What the engine calls "Delete" it does not announce to the page as a deletion.
        return "DeleteBackward";
    case PreviewWebView::Command::selectAll:
        return WEBKIT_EDITING_COMMAND_SELECT_ALL;
    }
    return "";
}

} // namespace corvanta
