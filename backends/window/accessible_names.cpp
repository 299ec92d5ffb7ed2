#include "backends/window/accessible_names.h"

#include "osp/ui/visible_controls.h"

namespace Osp::Ui {

namespace {

constexpr guint kDelayMs = 500;

std::string Names() {
    std::string names;
    WalkScreen([&names](const Control& control) {
        const std::string text = TextOf(control);
        if (text.empty()) return;
        if (!names.empty()) names += ", ";
        names += text;
        if (!control.IsEnabled()) names += " (disabled)";
    });
    return names;
}

}  // namespace

AccessibleNames::AccessibleNames(GtkWidget* picture) : picture_(picture) {
    gtk_accessible_update_property(GTK_ACCESSIBLE(picture_), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   "KIVO Camera", -1);
}

AccessibleNames::~AccessibleNames() {
    if (pending_ != 0) g_source_remove(pending_);
}

void AccessibleNames::ScreenChanged() {
    if (pending_ != 0) return;
    const auto update = [](gpointer self) {
        static_cast<AccessibleNames*>(self)->Update();
        return static_cast<gboolean>(G_SOURCE_REMOVE);
    };
    pending_ = g_timeout_add(kDelayMs, update, this);
}

void AccessibleNames::Update() {
    pending_ = 0;
    const std::string names = Names();
    if (names == told_) return;
    told_ = names;
    gtk_accessible_update_property(GTK_ACCESSIBLE(picture_), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION,
                                   told_.c_str(), -1);
}

}  // namespace Osp::Ui
