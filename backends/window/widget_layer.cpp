#include "backends/window/widget_layer.h"

#include <algorithm>
#include <utility>

#include "backends/window/letterbox.h"
#include "backends/window/texture.h"
#include "osp/ui/screen.h"

namespace Osp::Ui {

WidgetLayer::WidgetLayer(GtkWidget* picture)
    : overlay_(GTK_WIDGET(g_object_ref_sink(gtk_overlay_new()))), above_(gtk_picture_new()) {
    gtk_overlay_set_child(GTK_OVERLAY(overlay_), picture);
    gtk_picture_set_can_shrink(GTK_PICTURE(above_), TRUE);
    gtk_picture_set_content_fit(GTK_PICTURE(above_), GTK_CONTENT_FIT_CONTAIN);
    gtk_widget_set_can_target(above_, FALSE);
    gtk_widget_set_visible(above_, FALSE);
    gtk_overlay_add_overlay(GTK_OVERLAY(overlay_), above_);
    g_signal_connect(overlay_, "get-child-position",
                     G_CALLBACK(+[](GtkOverlay*, GtkWidget* widget, GdkRectangle* place,
                                    gpointer self) -> gboolean {
                         return static_cast<WidgetLayer*>(self)->GetPlace(widget, place);
                     }),
                     this);
}

WidgetLayer::~WidgetLayer() {
    if (telling_ != 0) g_source_remove(telling_);
    g_signal_handlers_disconnect_by_data(overlay_, this);
    g_object_unref(overlay_);
}

WidgetLayer::Entry* WidgetLayer::Find(const GtkWidget* widget) {
    const auto found = std::ranges::find(entries_, widget, &Entry::widget);
    return found == entries_.end() ? nullptr : &*found;
}

double WidgetLayer::Scale() const {
    return Letterbox(gtk_widget_get_width(overlay_), gtk_widget_get_height(overlay_), Screen::kSize)
        .Scale();
}

void WidgetLayer::Add(GtkWidget* widget, std::function<void(double)> scaled) {
    gtk_widget_set_visible(widget, FALSE);
    gtk_overlay_add_overlay(GTK_OVERLAY(overlay_), widget);
    gtk_widget_insert_before(widget, overlay_, above_);
    const double scale = Scale();
    scaled(scale);
    entries_.push_back({widget, std::move(scaled), {}, scale});
}

void WidgetLayer::Place(GtkWidget* widget, const Graphics::Rectangle& place) {
    Entry* const entry = Find(widget);
    if (entry == nullptr) return;
    entry->place = place;
    gtk_widget_set_visible(widget, !place.IsEmpty());
    if (!place.IsEmpty()) gtk_widget_grab_focus(widget);
    gtk_widget_queue_allocate(overlay_);
}

void WidgetLayer::Remove(GtkWidget* widget) {
    std::erase_if(entries_, [widget](const Entry& entry) { return entry.widget == widget; });
    gtk_overlay_remove_overlay(GTK_OVERLAY(overlay_), widget);
    ScreenChanged();
}

gboolean WidgetLayer::GetPlace(GtkWidget* widget, GdkRectangle* place) {
    const Entry* const entry = Find(widget);
    if (entry == nullptr) return FALSE;
    const Letterbox letterbox(gtk_widget_get_width(overlay_), gtk_widget_get_height(overlay_),
                              Screen::kSize);
    const Graphics::Rectangle area = letterbox.ToWindow(entry->place);
    *place = {area.x, area.y, area.width, area.height};
    // Not from here, in the middle of the toolkit's layout.
    if (entry->scale != letterbox.Scale() && telling_ == 0) {
        telling_ = g_idle_add_once(
            [](gpointer self) { static_cast<WidgetLayer*>(self)->TellScale(); }, this);
    }
    return TRUE;
}

void WidgetLayer::TellScale() {
    telling_ = 0;
    const double scale = Scale();
    for (Entry& entry : entries_) {
        if (std::exchange(entry.scale, scale) != scale) entry.scaled(scale);
    }
}

void WidgetLayer::ScreenChanged() {
    const OutsideViews& views = Screen::Current().GetOutsideViews();
    const Graphics::Surface* const picture = views.GetPictureAbove();
    gtk_widget_set_visible(above_, picture != nullptr);
    if (picture == nullptr) {
        gtk_picture_set_paintable(GTK_PICTURE(above_), nullptr);
        shown_ = 0;
        return;
    }
    if (std::exchange(shown_, views.GetPaintings()) == views.GetPaintings()) return;
    GdkTexture* const texture = MakeTexture(*picture, Opacity::kAsIs);
    gtk_picture_set_paintable(GTK_PICTURE(above_), GDK_PAINTABLE(texture));
    g_object_unref(texture);
}

}  // namespace Osp::Ui
