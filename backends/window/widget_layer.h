// Widgets that lie over the picture of the screen, and what lies above them.
#pragma once

#include <functional>
#include <gtk/gtk.h>
#include <vector>

#include <osp/graphics/rectangle.h>

namespace Osp::Ui {

/// Three layers, letterboxed alike: the picture of the screen, the widgets, and the picture of what
/// is above outside views, through which every event passes. Loop thread only.
class WidgetLayer {
  public:
    /// `picture` is taken into the layer's own widget, which goes into the window.
    explicit WidgetLayer(GtkWidget* picture);
    ~WidgetLayer();
    WidgetLayer(const WidgetLayer&) = delete;
    WidgetLayer& operator=(const WidgetLayer&) = delete;

    GtkWidget* GetWidget() const { return overlay_; }

    void Add(GtkWidget* widget, std::function<void(double)> scaled);
    void Place(GtkWidget* widget, const Graphics::Rectangle& place);
    void Remove(GtkWidget* widget);

    /// Shows what is above the views now.
    void ScreenChanged();

  private:
    struct Entry {
        GtkWidget* widget;
        std::function<void(double)> scaled;
        Graphics::Rectangle place;
        double scale;
    };

    Entry* Find(const GtkWidget* widget);
    gboolean GetPlace(GtkWidget* widget, GdkRectangle* place);
    double Scale() const;
    void TellScale();

    GtkWidget* overlay_;  // held beyond the window's end
    GtkWidget* above_;
    std::vector<Entry> entries_;
    unsigned shown_ = 0;  // how often the picture above had been painted when it was shown
    guint telling_ = 0;   // an idle of GLib's
};

}  // namespace Osp::Ui
