// A real X display for the tests that run the window as a process: an Xvfb server of a given
// screen size, optionally a window manager on it, and a client that finds a process's windows,
// grabs the screen and sends real input events through the XTEST extension.
#pragma once

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace kesto::test {

using Clock = std::chrono::steady_clock;

inline void SleepMs(int ms) {
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

// A child process started with fork and exec, ended with SIGTERM (then SIGKILL) when dropped.
class ChildProcess {
  public:
    ChildProcess() = default;
    // Starts argv[0] (a path, or a name looked up in PATH) in `dir` with `env` added to the
    // environment; its output goes to `log` (or nowhere). `keepFd` stays open in the child.
    ChildProcess(const std::vector<std::string>& argv, const std::vector<std::string>& env,
                 const std::string& dir = "", const std::string& log = "", int keepFd = -1) {
        pid_ = fork();
        if (pid_ != 0)
            return;
        const int out =
            open(log.empty() ? "/dev/null" : log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        dup2(out, 1);
        dup2(out, 2);
        const int in = open("/dev/null", O_RDONLY);
        dup2(in, 0);
        for (int fd = 3; fd < 1024; ++fd) {
            if (fd != keepFd)
                close(fd);
        }
        if (!dir.empty() && chdir(dir.c_str()) != 0)
            _exit(127);
        for (const std::string& e : env)
            putenv(strdup(e.c_str()));
        std::vector<char*> args;
        for (const std::string& a : argv)
            args.push_back(const_cast<char*>(a.c_str()));
        args.push_back(nullptr);
        execvp(args[0], args.data());
        _exit(127);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ChildProcess(ChildProcess&& other) noexcept { *this = std::move(other); }
    ChildProcess& operator=(ChildProcess&& other) noexcept {
        std::swap(pid_, other.pid_);
        std::swap(status_, other.status_);
        return *this;
    }
    ~ChildProcess() { Stop(); }

    pid_t Pid() const { return pid_; }
    bool Running() {
        if (pid_ <= 0 || status_)
            return false;
        int status = 0;
        if (waitpid(pid_, &status, WNOHANG) == pid_) {
            status_ = status;
            return false;
        }
        return true;
    }
    // The exit code once the process ended within `ms`; none otherwise (or when killed).
    std::optional<int> WaitExit(int ms) {
        const auto end = Clock::now() + std::chrono::milliseconds(ms);
        while (Running() && Clock::now() < end)
            SleepMs(20);
        if (!status_ || !WIFEXITED(*status_))
            return std::nullopt;
        return WEXITSTATUS(*status_);
    }
    // True once the process was ended by SIGKILL.
    bool Killed() {
        Running();
        return status_ && WIFSIGNALED(*status_) && WTERMSIG(*status_) == SIGKILL;
    }
    // Ends the process at once with SIGKILL, as a power cut would, and reaps it.
    void Kill() {
        if (!Running())
            return;
        kill(pid_, SIGKILL);
        int status = 0;
        if (waitpid(pid_, &status, 0) == pid_)
            status_ = status;
    }
    void Stop() {
        if (!Running())
            return;
        kill(pid_, SIGTERM);
        if (!WaitExit(3000) && Running()) {
            kill(pid_, SIGKILL);
            waitpid(pid_, nullptr, 0);
        }
    }

  private:
    pid_t pid_ = -1;
    std::optional<int> status_;
};

// CPU time (user + system) and resident memory of a running process, from /proc.
struct ProcessUse {
    double CpuSeconds = 0;
    long ResidentKb = 0;
};

inline ProcessUse ReadProcessUse(pid_t pid) {
    ProcessUse use;
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
    const size_t close = text.rfind(')');
    if (close != std::string::npos) {
        std::istringstream fields(text.substr(close + 2));
        std::string field;
        unsigned long long ticks = 0;
        for (int i = 3; i <= 15 && (fields >> field); ++i) {
            if (i == 14 || i == 15)
                ticks += std::stoull(field);
        }
        use.CpuSeconds = static_cast<double>(ticks) / static_cast<double>(sysconf(_SC_CLK_TCK));
    }
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmRSS:", 0) == 0)
            use.ResidentKb = std::stol(line.substr(6));
    }
    return use;
}

// The state letter of a process's main thread ('R' running or ready to run, 'S' waiting, 'D'
// waiting for the disk, ...); 0 when it is gone.
inline char ProcessState(pid_t pid) {
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
    const size_t close = text.rfind(')');
    return close != std::string::npos && close + 2 < text.size() ? text[close + 2] : '\0';
}

struct ScreenRect {
    int X = 0, Y = 0, Width = 0, Height = 0;
};

// An Xvfb server of one screen, with a client connection of its own.
class XServer {
  public:
    XServer(int width, int height) : width_(width), height_(height) {
        int fds[2];
        if (pipe(fds) != 0)
            return;
        // Xvfb picks a free display itself and writes its number once it accepts clients.
        server_ = ChildProcess(
            {"Xvfb", "-displayfd", std::to_string(fds[1]), "-screen", "0",
             std::to_string(width) + "x" + std::to_string(height) + "x24", "-nolisten", "tcp"},
            {}, "", "", fds[1]);
        close(fds[1]);
        std::string number;
        char c = 0;
        while (read(fds[0], &c, 1) == 1 && c != '\n')
            number += c;
        close(fds[0]);
        if (number.empty())
            return;
        name_ = ":" + number;
        display_ = XOpenDisplay(name_.c_str());
        // A window that a killed process leaves behind is gone a moment later: asking about it
        // is an error to pass over, not one that ends the test.
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    }
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;
    ~XServer() {
        if (display_ != nullptr)
            XCloseDisplay(display_);
    }

    bool Ready() const { return display_ != nullptr; }
    const std::string& Name() const { return name_; }
    Display* Dpy() const { return display_; }
    int Width() const { return width_; }
    int Height() const { return height_; }
    Window Root() const { return DefaultRootWindow(display_); }

    // True once a window manager has announced itself on the root window.
    bool HasWindowManager() const {
        const Atom check = XInternAtom(display_, "_NET_SUPPORTING_WM_CHECK", False);
        return WindowProperty(Root(), check, XA_WINDOW).has_value();
    }

    // The viewable top-level windows of a process (its client windows, below any frame).
    std::vector<Window> WindowsOf(pid_t pid) const {
        std::vector<Window> found;
        Collect(Root(), pid, 0, found);
        return found;
    }

    // The largest of them: the main window.
    std::optional<Window> MainWindowOf(pid_t pid) const {
        std::optional<Window> best;
        long bestArea = 0;
        for (Window w : WindowsOf(pid)) {
            const ScreenRect r = Geometry(w);
            if (static_cast<long>(r.Width) * r.Height > bestArea) {
                bestArea = static_cast<long>(r.Width) * r.Height;
                best = w;
            }
        }
        return best;
    }

    // A window's client area in screen coordinates.
    ScreenRect Geometry(Window w) const {
        XWindowAttributes a{};
        XGetWindowAttributes(display_, w, &a);
        int x = 0, y = 0;
        Window child = 0;
        XTranslateCoordinates(display_, w, Root(), 0, 0, &x, &y, &child);
        return {x, y, a.width, a.height};
    }

    // The screen's pixels (0xRRGGBB) inside a rectangle.
    std::vector<uint32_t> Grab(const ScreenRect& r) const {
        std::vector<uint32_t> pixels;
        XImage* image =
            XGetImage(display_, Root(), r.X, r.Y, r.Width, r.Height, AllPlanes, ZPixmap);
        if (image == nullptr)
            return pixels;
        pixels.reserve(static_cast<size_t>(r.Width) * r.Height);
        for (int y = 0; y < r.Height; ++y) {
            for (int x = 0; x < r.Width; ++x)
                pixels.push_back(static_cast<uint32_t>(XGetPixel(image, x, y)) & 0xFFFFFF);
        }
        XDestroyImage(image);
        return pixels;
    }
    std::vector<uint32_t> GrabScreen() const { return Grab({0, 0, width_, height_}); }

    void MoveTo(int x, int y) const {
        XTestFakeMotionEvent(display_, -1, x, y, CurrentTime);
        XSync(display_, False);
    }
    void Button(bool down) const {
        XTestFakeButtonEvent(display_, 1, down ? True : False, CurrentTime);
        XSync(display_, False);
    }
    // Notches of the wheel at (x, y), closer (up) or farther, with Control held.
    void CtrlWheel(int x, int y, int notches, bool up) const {
        MoveTo(x, y);
        const KeyCode control = XKeysymToKeycode(display_, XK_Control_L);
        XTestFakeKeyEvent(display_, control, True, CurrentTime);
        for (int i = 0; i < notches; ++i) {
            XTestFakeButtonEvent(display_, up ? 4 : 5, True, CurrentTime);
            XTestFakeButtonEvent(display_, up ? 4 : 5, False, CurrentTime);
        }
        XTestFakeKeyEvent(display_, control, False, CurrentTime);
        XSync(display_, False);
    }
    void Click(int x, int y) const {
        MoveTo(x, y);
        Button(true);
        Button(false);
    }
    // A key pressed and released in the given window, which gets the input focus first; with
    // a modifier (Control_L) held down around it when one is given.
    void Key(Window w, KeySym key, KeySym modifier = NoSymbol) const {
        XSetInputFocus(display_, w, RevertToParent, CurrentTime);
        const KeyCode held = modifier != NoSymbol ? XKeysymToKeycode(display_, modifier) : 0;
        if (held != 0)
            XTestFakeKeyEvent(display_, held, True, CurrentTime);
        const KeyCode code = XKeysymToKeycode(display_, key);
        XTestFakeKeyEvent(display_, code, True, CurrentTime);
        XTestFakeKeyEvent(display_, code, False, CurrentTime);
        if (held != 0)
            XTestFakeKeyEvent(display_, held, False, CurrentTime);
        XSync(display_, False);
    }

  private:
    std::optional<unsigned long> WindowProperty(Window w, Atom property, Atom type) const {
        Atom actual = 0;
        int format = 0;
        unsigned long count = 0, after = 0;
        unsigned char* data = nullptr;
        if (XGetWindowProperty(display_, w, property, 0, 1, False, type, &actual, &format, &count,
                               &after, &data) != Success ||
            data == nullptr) {
            return std::nullopt;
        }
        std::optional<unsigned long> value;
        if (count == 1 && format == 32)
            value = *reinterpret_cast<unsigned long*>(data);
        XFree(data);
        return value;
    }

    void Collect(Window w, pid_t pid, int depth, std::vector<Window>& found) const {
        Window root = 0, parent = 0;
        Window* children = nullptr;
        unsigned int count = 0;
        if (!XQueryTree(display_, w, &root, &parent, &children, &count))
            return;
        const Atom pidAtom = XInternAtom(display_, "_NET_WM_PID", False);
        for (unsigned int i = 0; i < count; ++i) {
            XWindowAttributes a{};
            if (!XGetWindowAttributes(display_, children[i], &a) || a.map_state != IsViewable)
                continue;
            const auto owner = WindowProperty(children[i], pidAtom, XA_CARDINAL);
            if (owner && static_cast<pid_t>(*owner) == pid)
                found.push_back(children[i]);
            else if (depth < 2)
                Collect(children[i], pid, depth + 1, found);  // inside a frame
        }
        if (children != nullptr)
            XFree(children);
    }

    int width_, height_;
    ChildProcess server_;
    std::string name_;
    Display* display_ = nullptr;
};

// Waits until `done` holds or `ms` have passed; true when it held.
inline bool WaitUntil(int ms, const std::function<bool()>& done, int stepMs = 20) {
    const auto end = Clock::now() + std::chrono::milliseconds(ms);
    while (!done()) {
        if (Clock::now() >= end)
            return false;
        SleepMs(stepMs);
    }
    return true;
}

}  // namespace kesto::test
