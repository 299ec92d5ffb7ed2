// A private X server, and the finger and the keyboard of a person in front of it.
#pragma once

#include <memory>
#include <string>
#include <vector>

typedef struct _GSubprocess GSubprocess;
typedef struct _XDisplay Display;

namespace Kivo::Testing {

class XServer {
  public:
    XServer();
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    /// As the environment variable DISPLAY wants it.
    const std::string& Name() const { return name_; }

    /// Waits for the program's window; 0 when none appears within 10 s.
    unsigned long FindWindow(const std::string& title);
    void Resize(unsigned long window, int width, int height);
    /// Does what a window manager does with a window that the user minimises, or restores.
    void SetMinimised(unsigned long window, bool isMinimised);

    /// Screen positions.
    void MoveTo(int x, int y);
    void Press();
    void Release();
    void Key(unsigned long symbol);
    void HoldKey(unsigned long symbol, bool isDown);
    /// Puts a symbol on the keyboard that may not be there.
    void AddKey(unsigned long symbol);
    /// The keyboard goes to the program's window, or with 0 to somebody else's.
    void Focus(unsigned long window);
    /// The colour that is shown there.
    unsigned long PixelAt(int x, int y);
    /// Those of a row of the screen, from its left end.
    std::vector<unsigned long> RowAt(int y, int width);

  private:
    unsigned long Search(const std::string& title);
    std::vector<unsigned long> Pixels(int x, int y, int count);

    GSubprocess* server_ = nullptr;
    std::string name_ = ":";
    Display* display_ = nullptr;
    unsigned long other_ = 0;  // somebody else's window
};

}  // namespace Kivo::Testing
