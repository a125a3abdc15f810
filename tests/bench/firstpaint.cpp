// Starts a program and measures from outside how long it takes until its first window is painted:
// until the X server, which reports every change of a window's picture, has reported all of it.
//
//     firstpaint PROGRAM [ARGUMENT...]
//
// Writes one line, {"pid": ..., "mapped": ..., "painted": ..., "cpu": ...} with times in seconds,
// and ends the program when standard input ends.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <QRegion>

namespace {

double seconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

/// The windows of the display, from the moment they are created.
class Screen final {
 public:
    Screen() {
        const auto *extension = xcb_get_extension_data(connection_, &xcb_damage_id);
        if (extension == nullptr || extension->present == 0) {
            qFatal("There is no X server that reports damage");
        }
        damageNotify_ = extension->first_event + XCB_DAMAGE_NOTIFY;
        // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): xcb made it
        std::free(xcb_damage_query_version_reply(
            connection_, xcb_damage_query_version(connection_, 1, 1), nullptr));
        listen(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root,
               XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
        // Returns when the server listens.
        // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): as above
        std::free(
            xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    }

    /// Waits until a window is on screen and every part of it has been drawn; returns when it came
    /// on screen.
    double waitUntilPainted() {
        while (xcb_generic_event_t *event = xcb_wait_for_event(connection_)) {
            take(*event);
            std::free(event);  // NOLINT(cppcoreguidelines-no-malloc): as above
            for (const auto &[window, picture] : pictures_) {
                if (picture.isComplete()) {
                    return picture.mapped;
                }
            }
        }
        qFatal("The X server has gone");
    }

 private:
    struct Picture {
        /// False for the window manager's own frames.
        bool managed = false;
        /// When it came on screen; 0 before.
        double mapped = 0;
        QRect rect;
        QRegion painted;

        bool isComplete() const {
            return managed && mapped > 0 && !rect.isEmpty() &&
                   QRegion(rect).subtracted(painted).isEmpty();
        }
    };

    void listen(xcb_window_t window, std::uint32_t events) {
        xcb_change_window_attributes(connection_, window, XCB_CW_EVENT_MASK, &events);
    }

    template <class Event>
    static const Event &as(const xcb_generic_event_t &event) {
        return reinterpret_cast<const Event &>(event);
    }

    void take(const xcb_generic_event_t &event) {
        const int type = event.response_type & 0x7f;
        if (type == XCB_CREATE_NOTIFY) {
            const auto &made = as<xcb_create_notify_event_t>(event);
            if (made.override_redirect == 0) {
                pictures_[made.window] = {};
                listen(made.window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
                xcb_damage_create(connection_, xcb_generate_id(connection_), made.window,
                                  XCB_DAMAGE_REPORT_LEVEL_DELTA_RECTANGLES);
                xcb_flush(connection_);
            }
        } else if (type == XCB_REPARENT_NOTIFY) {
            pictures_[as<xcb_reparent_notify_event_t>(event).window].managed = true;
        } else if (type == XCB_MAP_NOTIFY) {
            pictures_[as<xcb_map_notify_event_t>(event).window].mapped = seconds(CLOCK_MONOTONIC);
        } else if (type == damageNotify_) {
            const auto &damage = as<xcb_damage_notify_event_t>(event);
            const auto &area = damage.area;
            Picture &picture = pictures_[damage.drawable];
            picture.rect = QRect(0, 0, damage.geometry.width, damage.geometry.height);
            picture.painted += QRect(area.x, area.y, area.width, area.height);
        }
    }

    xcb_connection_t *connection_ = xcb_connect(nullptr, nullptr);
    int damageNotify_ = 0;
    std::map<xcb_window_t, Picture> pictures_;
};

}  // namespace

int main(int, char **argv) {
    Screen screen;
    pid_t program = 0;
    const double start = seconds(CLOCK_MONOTONIC);
    if (posix_spawn(&program, argv[1], nullptr, nullptr, argv + 1, environ) != 0) {
        qFatal("The program cannot be started");
    }
    // Does not wait forever for a program that shows nothing.
    alarm(60);
    const double mapped = screen.waitUntilPainted();
    alarm(0);
    const double painted = seconds(CLOCK_MONOTONIC);
    clockid_t processorTime{};
    if (clock_getcpuclockid(program, &processorTime) != 0) {
        qFatal("The program has ended");
    }
    std::printf("{\"pid\": %d, \"mapped\": %.6f, \"painted\": %.6f, \"cpu\": %.6f}\n", int(program),
                mapped - start, painted - start, seconds(processorTime));
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    kill(program, SIGTERM);
    waitpid(program, nullptr, 0);
    return 0;
}
