// Tells assistive technology what is on the screen.
#pragma once

#include <gtk/gtk.h>
#include <string>

namespace Osp::Ui {

/// The window shows one picture, so the toolkit has one accessible object: its description lists
/// the names of the visible controls, topmost first. Loop thread only.
class AccessibleNames {
  public:
    /// `picture` is not owned and outlives this object.
    explicit AccessibleNames(GtkWidget* picture);
    ~AccessibleNames();
    AccessibleNames(const AccessibleNames&) = delete;
    AccessibleNames& operator=(const AccessibleNames&) = delete;

    /// Cheap enough for every frame: the names follow a little later, all changes together.
    void ScreenChanged();

  private:
    void Update();

    GtkWidget* picture_;
    std::string told_;
    guint pending_ = 0;  // a timeout of GLib's
};

}  // namespace Osp::Ui
