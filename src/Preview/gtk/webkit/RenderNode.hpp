#pragma once

#include <gtk/gtk.h>

#include <memory>

namespace corvanta {

struct RenderNodeUnref {
    void operator()(GskRenderNode* node) const { gsk_render_node_unref(node); }
};

/// What a widget draws, or nothing when it draws nothing.
using RenderNode = std::unique_ptr<GskRenderNode, RenderNodeUnref>;

} // namespace corvanta
