#include "tests/support/programs/x_server.h"

#include <chrono>
#include <gio/gio.h>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

// After the others: its macros collide with their names.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace Kivo::Testing {

XServer::XServer() {
    // The server chooses a free number itself and prints it.
    server_ = g_subprocess_new(static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                             G_SUBPROCESS_FLAGS_STDERR_SILENCE),
                               nullptr, "Xvfb", "-displayfd", "1", "-screen", "0", "1600x1200x24",
                               nullptr);
    if (server_ == nullptr) {
        ADD_FAILURE() << "Xvfb cannot be started";
        std::abort();
    }
    GInputStream* const output = g_subprocess_get_stdout_pipe(server_);
    for (char c = 0; g_input_stream_read(output, &c, 1, nullptr, nullptr) == 1 && c != '\n';) {
        name_ += c;
    }
    display_ = XOpenDisplay(name_.c_str());
    EXPECT_NE(display_, nullptr) << name_;
}

XServer::~XServer() {
    if (display_ != nullptr) XCloseDisplay(display_);
    g_subprocess_send_signal(server_, SIGTERM);
    g_subprocess_wait(server_, nullptr, nullptr);
    g_object_unref(server_);
}

unsigned long XServer::Search(const std::string& title) {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;
    XQueryTree(display_, DefaultRootWindow(display_), &root, &parent, &children, &count);
    const std::unique_ptr<Window, int (*)(void*)> owned(children, XFree);
    for (unsigned i = 0; i < count; ++i) {
        char* name = nullptr;
        XWindowAttributes attributes;
        if (XFetchName(display_, children[i], &name) == 0) continue;
        const bool isIt = title == name;
        XFree(name);
        if (isIt && XGetWindowAttributes(display_, children[i], &attributes) != 0 &&
            attributes.map_state == IsViewable) {
            return children[i];
        }
    }
    return 0;
}

unsigned long XServer::FindWindow(const std::string& title) {
    using namespace std::chrono_literals;
    for (int i = 0; i < 500; ++i) {
        if (const unsigned long found = Search(title)) return found;
        std::this_thread::sleep_for(20ms);
    }
    return 0;
}

void XServer::Resize(unsigned long window, int width, int height) {
    XMoveResizeWindow(display_, window, 0, 0, static_cast<unsigned>(width),
                      static_cast<unsigned>(height));
    XSync(display_, False);
}

void XServer::SetMinimised(unsigned long window, bool isMinimised) {
    const Atom property = XInternAtom(display_, "_NET_WM_STATE", False);
    const Atom hidden = XInternAtom(display_, "_NET_WM_STATE_HIDDEN", False);
    XChangeProperty(display_, window, property, XA_ATOM, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&hidden), isMinimised ? 1 : 0);
    XSync(display_, False);
}

void XServer::MoveTo(int x, int y) {
    XTestFakeMotionEvent(display_, -1, x, y, CurrentTime);
    XSync(display_, False);
}

void XServer::Press() {
    XTestFakeButtonEvent(display_, 1, True, CurrentTime);
    XSync(display_, False);
}

void XServer::Release() {
    XTestFakeButtonEvent(display_, 1, False, CurrentTime);
    XSync(display_, False);
}

void XServer::Key(unsigned long symbol) {
    HoldKey(symbol, true);
    HoldKey(symbol, false);
}

void XServer::HoldKey(unsigned long symbol, bool isDown) {
    const KeyCode code = XKeysymToKeycode(display_, symbol);
    EXPECT_NE(code, 0);
    XTestFakeKeyEvent(display_, code, isDown ? True : False, CurrentTime);
    XSync(display_, False);
}

void XServer::AddKey(unsigned long symbol) {
    int first = 0;
    int last = 0;
    XDisplayKeycodes(display_, &first, &last);
    KeySym symbols[] = {symbol, symbol};
    // The last key is nobody's.
    XChangeKeyboardMapping(display_, last, 2, symbols, 1);
    XSync(display_, False);
}

void XServer::Focus(unsigned long window) {
    if (window == 0 && other_ == 0) {
        other_ =
            XCreateSimpleWindow(display_, DefaultRootWindow(display_), 1500, 1100, 10, 10, 0, 0, 0);
        XMapWindow(display_, other_);
    }
    XSetInputFocus(display_, window == 0 ? other_ : window, RevertToNone, CurrentTime);
    XSync(display_, False);
}

unsigned long XServer::PixelAt(int x, int y) {
    return Pixels(x, y, 1).front();
}

std::vector<unsigned long> XServer::RowAt(int y, int width) {
    return Pixels(0, y, width);
}

std::vector<unsigned long> XServer::Pixels(int x, int y, int count) {
    std::vector<unsigned long> pixels(static_cast<std::size_t>(count));
    XImage* const image =
        XGetImage(display_, DefaultRootWindow(display_), x, y, static_cast<unsigned>(count), 1,
                  AllPlanes, ZPixmap);
    if (image == nullptr) return pixels;
    for (int i = 0; i < count; ++i) pixels[static_cast<std::size_t>(i)] = XGetPixel(image, i, 0);
    XDestroyImage(image);
    return pixels;
}

}  // namespace Kivo::Testing
