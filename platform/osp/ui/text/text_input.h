// What is typed, on its way into the edit area that has the focus.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <osp/base/string.h>
#include <osp/graphics/rectangle.h>
#include <osp/ui/controls/edit_area.h>
#include <osp/ui/weak_control.h>

#include "osp/base/service.h"
#include "osp/ui/text/caret_move.h"
#include "osp/ui/text/text_editor.h"

namespace Osp::Ui {

class Keyboard;

/// Who composes text for a real keyboard: the window's input method, or nobody.
class InputMethod {
  public:
    virtual ~InputMethod() = default;
    /// Another area is edited, or none, or the caret has moved.
    virtual void Follow() = 0;
    /// What is being composed is not wanted any more.
    virtual void Abandon() = 0;
};

/// A text that is edited elsewhere than in an edit area: in a field of a page.
class OutsideField {
  public:
    virtual ~OutsideField() = default;
    /// In the place of the selection; a line end is Enter.
    virtual void Insert(const Base::String& text) = 0;
    /// The selection; without one, what `step` goes over.
    virtual void Delete(TextEditor::Step step) = 0;
};

/// Loop thread only. What changes the text does nothing while nothing is edited.
class TextInput : public Service<TextInput> {
  public:
    /// `language` is the user's, as "de"; its letters are on the screen's keyboard.
    explicit TextInput(std::string language);
    ~TextInput();
    TextInput(const TextInput&) = delete;
    TextInput& operator=(const TextInput&) = delete;

    /// Not owned; null takes it away.
    void SetMethod(InputMethod* method) { method_ = method; }

    /// The area that is edited; null while that is not on the screen, or a message box waits above
    /// it.
    Controls::EditArea* GetTarget() const;
    /// With the screen's keyboard, unless a real one was used last. A finger on the area wants the
    /// screen's.
    void Focus(Controls::EditArea& area, bool isByTouch);
    /// The same with a field that is shown by `control`. It is not owned and left before it ends.
    void FocusOutside(Control& control, OutsideField& field, bool isByTouch);
    void LeaveOutside(const OutsideField& field);
    /// The control whose field is edited; null while that is not on the screen, or something lies
    /// above it.
    Control* GetOutsideTarget() const;
    /// Lets go of an area that is not on the screen any more.
    void Refresh();
    /// The user's wish; a touch on an area brings it back.
    void HideKeyboard();

    void Insert(const Base::String& text);
    void Delete(TextEditor::Step step);
    // These are for areas only:
    void Move(CaretMove move, bool extend);
    void SelectAll();
    /// Empty without a selection.
    Base::String GetSelection() const;
    /// Replaces what was composed before; empty ends it. `caret` is a place in it.
    void SetComposition(const Base::String& text, int caret);

    /// A real keyboard is in use, and the one on the screen in the way.
    void UseRealKeyboard();

    /// On the screen; empty while nothing is edited.
    Graphics::Rectangle GetCaret() const;

    /// The area's text or caret has been changed by somebody else, so nothing is composed any more.
    void Changed(const Controls::EditArea& area);

  private:
    template <class Change>
    void Edit(Change change);
    /// What is written in, on the screen or not; null when there is nothing.
    Control* Target() const { return target_.Get(); }
    void SetTarget(Control& control, OutsideField* field);
    void Forget();
    void ShowKeyboardFor(bool isByTouch);
    void UpdateKeyboard();
    void Follow();

    std::string language_;
    WeakControl<Control> target_;
    OutsideField* outside_ = nullptr;     // not owned; null while target_ is an edit area
    std::unique_ptr<Keyboard> keyboard_;  // null until first shown
    InputMethod* method_ = nullptr;       // not owned
    bool isKeyboardWanted_ = true;
    bool isRealKeyboardUsed_ = false;
};

}  // namespace Osp::Ui
