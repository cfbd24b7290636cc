#pragma once

namespace corvanta {

/// What a text view's find bar can be asked for. The numbers are the tags that the desktop's find menus send.
enum class FindPanelAction {
    showFindPanel = 1,
    next = 2,
    previous = 3,
    setFindString = 7,
    showReplaceInterface = 12,
};

} // namespace corvanta
