#include "Preview/gtk/webkit/HeldPicture.hpp"

#include "Preview/gtk/webkit/RenderNode.hpp"

namespace corvanta {

// The pixels become a texture of their own: what the web engine draws lies in memory that its next pictures
// are written to.
void HeldPicture::hold(Gtk::Widget& widget, GskRenderNode* drawn) {
    if (drawn == nullptr || !widget.get_mapped() || widget.get_width() == 0 || widget.get_height() == 0)
        return;
    const auto scale = static_cast<float>(widget.get_scale_factor());
    GtkSnapshot* snapshot = gtk_snapshot_new();
    gtk_snapshot_scale(snapshot, scale, scale);
    gtk_snapshot_append_node(snapshot, drawn);
    const RenderNode picture(gtk_snapshot_free_to_node(snapshot));
    const graphene_rect_t viewport = GRAPHENE_RECT_INIT(0, 0, scale * static_cast<float>(widget.get_width()),
                                                        scale * static_cast<float>(widget.get_height()));
    GskRenderer* renderer = gtk_native_get_renderer(gtk_widget_get_native(widget.gobj()));
    texture_ = GObjectReference<GdkTexture>(gsk_renderer_render_texture(renderer, picture.get(), &viewport));
}

void HeldPicture::release() {
    texture_.reset();
}

void HeldPicture::draw(Gtk::Snapshot& snapshot, int width, int height) const {
    gdk_paintable_snapshot(GDK_PAINTABLE(texture_.get()), GDK_SNAPSHOT(snapshot.gobj()), width, height);
}

} // namespace corvanta
