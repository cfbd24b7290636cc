#include "EditorCore/gtk/CodeEditorView.hpp"

#include "EditorCore/EditorFont.hpp"

#include <adwaita.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/stylecontext.h>

#include <algorithm>
#include <optional>

namespace corvanta {

namespace {

/// The font size that a zoom key asks for, when it is one.
std::optional<double> sizeAskedFor(guint key, double size) {
    switch (key) {
    case GDK_KEY_plus:
    case GDK_KEY_equal:
    case GDK_KEY_KP_Add:
        return std::clamp(size + 1, EditorFont::smallest, EditorFont::largest);
    case GDK_KEY_minus:
    case GDK_KEY_KP_Subtract:
        return std::clamp(size - 1, EditorFont::smallest, EditorFont::largest);
    case GDK_KEY_0:
    case GDK_KEY_KP_0:
        return EditorFont{}.size;
    default:
        return std::nullopt;
    }
}

} // namespace

CodeEditorView::CodeEditorView(EditorViewModel& viewModel, const Services& services,
                               const std::string& themeID, double fontSize)
    : Gtk::Box(Gtk::Orientation::VERTICAL),
      textView_(std::make_shared<IndentingTextView>(*viewModel.text, viewModel.undoHistory)),
      painter_(*textView_, textView_->textStorage()),
      findBar_(*textView_, services.findRequest, services.mainQueue),
      coordinator_({viewModel, textView_, textView_->textStorage(), services.mainQueue}, themeID, fontSize) {
    // Above the style that the widget gives itself, which knows nothing of the editor's themes.
    textView_->get_style_context()->add_provider(textView_->textStorage().style(),
                                                 GTK_STYLE_PROVIDER_PRIORITY_USER);
    followAppearance();
    scrollView_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scrollView_.set_child(*textView_);
    scrollView_.set_vexpand(true);
    append(findBar_);
    append(scrollView_);
    followZoomKeys();
}

void CodeEditorView::setThemeID(const std::string& themeID) {
    coordinator_.update(themeID, coordinator_.fontSize());
}

void CodeEditorView::setFontSize(double fontSize) {
    coordinator_.update(coordinator_.themeID(), fontSize);
}

void CodeEditorView::updateLanguage() {
    textView_->updateLanguage();
    findBar_.updateLanguage();
}

void CodeEditorView::followAppearance() {
    AdwStyleManager* manager = adw_style_manager_get_default();
    const auto apply = +[](AdwStyleManager* styleManager, GParamSpec*, gpointer self) {
        const Appearance appearance =
            adw_style_manager_get_dark(styleManager) != FALSE ? Appearance::dark : Appearance::light;
        static_cast<CodeEditorView*>(self)->textView_->setAppearance(appearance);
        static_cast<CodeEditorView*>(self)->textView_->textStorage().setAppearance(appearance);
    };
    apply(manager, nullptr, this);
    appearanceChanged_ = SignalConnection(manager, "notify::dark", apply, this);
}

void CodeEditorView::followZoomKeys() {
    const auto controller = Gtk::EventControllerKey::create();
    controller->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    controller->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType modifiers) {
            const auto commandModifiers = Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::ALT_MASK;
            if ((modifiers & commandModifiers) != Gdk::ModifierType::CONTROL_MASK)
                return false;
            const std::optional<double> size = sizeAskedFor(key, coordinator_.fontSize());
            if (size && *size != coordinator_.fontSize())
                fontSizeRequested_.emit(*size);
            return size.has_value();
        },
        false);
    add_controller(controller);
}

} // namespace corvanta
