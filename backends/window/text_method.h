// The desktop's keyboard, input method and clipboard, for the text that is edited.
#pragma once

#include <gtk/gtk.h>

#include <osp/ui/weak_control.h>

#include "osp/ui/text/text_input.h"

namespace Osp::Ui {

/// Keys reach the input method only while text is edited; so they do nothing strange to a camera.
/// What comes of them is posted to the loop as system events, in the order of arrival.
class TextMethod : public InputMethod {
  public:
    /// `picture` shows the screen, letterboxed; it is not owned and outlives this object.
    explicit TextMethod(GtkWidget* picture);
    ~TextMethod() override;
    TextMethod(const TextMethod&) = delete;
    TextMethod& operator=(const TextMethod&) = delete;

    /// Whether the key was for the text, and so is nobody else's.
    bool TakeKey(GdkEvent* event);
    /// The window is not the one that is typed into any more.
    void LetGo();

    void Follow() override;
    void Abandon() override;

  private:
    bool Command(guint keyval, GdkModifierType state);
    void OnCommit(const char* text);
    void OnComposition();
    void PlaceCaret();

    GtkWidget* picture_;
    GtkIMContext* context_;
    WeakControl<Controls::EditArea> edited_;  // for which the input method is at work
};

}  // namespace Osp::Ui
