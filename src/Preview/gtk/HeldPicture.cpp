#include "Preview/gtk/HeldPicture.hpp"

#include "Platform/gtk/GObjectReference.hpp"

#include <gtk/gtk.h>

#include <memory>

namespace corvanta {

namespace {

struct RenderNodeUnref {
    void operator()(GskRenderNode* node) const { gsk_render_node_unref(node); }
};

/// The pixels of `image` as a texture of its own: what the web engine draws lies in memory that its next
/// pictures are written to.
GObjectReference<GdkTexture> pixels(GdkPaintable* image, GskRenderer* renderer, int width, int height) {
    GtkSnapshot* snapshot = gtk_snapshot_new();
    gdk_paintable_snapshot(image, snapshot, width, height);
    const std::unique_ptr<GskRenderNode, RenderNodeUnref> node(gtk_snapshot_free_to_node(snapshot));
    if (!node)
        return nullptr;
    const graphene_rect_t viewport =
        GRAPHENE_RECT_INIT(0, 0, static_cast<float>(width), static_cast<float>(height));
    return GObjectReference<GdkTexture>(gsk_renderer_render_texture(renderer, node.get(), &viewport));
}

} // namespace

void HeldPicture::hold(Gtk::Widget& widget) {
    if (!widget.get_mapped() || widget.get_width() == 0 || widget.get_height() == 0)
        return;
    const GObjectReference<GdkPaintable> paintable(gtk_widget_paintable_new(widget.gobj()));
    const GObjectReference<GdkPaintable> image(gdk_paintable_get_current_image(paintable.get()));
    const int scale = widget.get_scale_factor();
    texture_ = pixels(image.get(), gtk_native_get_renderer(gtk_widget_get_native(widget.gobj())),
                      widget.get_width() * scale, widget.get_height() * scale);
}

void HeldPicture::release() {
    texture_.reset();
}

void HeldPicture::draw(Gtk::Snapshot& snapshot, int width, int height) const {
    gdk_paintable_snapshot(GDK_PAINTABLE(texture_.get()), GDK_SNAPSHOT(snapshot.gobj()), width, height);
}

} // namespace corvanta
