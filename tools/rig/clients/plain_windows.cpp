// Windows of one colour, made and changed by lines on standard input:
//   open WIDTH HEIGHT MIN_WIDTH MIN_HEIGHT RRGGBB CLASS TITLE...     answers "window NUMBER"
//   fill NUMBER RRGGBB        another colour
//   title NUMBER TITLE...     another title
//   destroy NUMBER
// Says "closed NUMBER" when the window manager asked to close a window, which is then destroyed.

#include <xcb/xcb.h>
#include <xcb/xcb_icccm.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <sys/poll.h>
#include <unistd.h>

namespace {

class PlainWindows {
public:
    PlainWindows() : connection_(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(connection_) != 0) std::exit(1);
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        protocols_ = atom("WM_PROTOCOLS");
        deleteWindow_ = atom("WM_DELETE_WINDOW");
    }

    void run() {
        std::string pending;
        for (;;) {
            pollfd waits[] = {{STDIN_FILENO, POLLIN, 0},
                              {xcb_get_file_descriptor(connection_), POLLIN, 0}};
            ::poll(waits, 2, -1);
            if (waits[0].revents != 0 && !readCommands(pending)) return;
            if (xcb_connection_has_error(connection_) != 0) return;
            handleEvents();
        }
    }

private:
    xcb_atom_t atom(const char* name) {
        const auto length = static_cast<std::uint16_t>(std::string(name).size());
        auto* reply = xcb_intern_atom_reply(connection_,
                                            xcb_intern_atom(connection_, 0, length, name), nullptr);
        const auto found = reply->atom;
        std::free(reply);
        return found;
    }

    bool readCommands(std::string& pending) {
        char bytes[4096];
        const auto size = ::read(STDIN_FILENO, bytes, sizeof bytes);
        if (size <= 0) return false;
        pending.append(bytes, static_cast<std::size_t>(size));
        for (auto end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
            obey(pending.substr(0, end));
            pending.erase(0, end + 1);
        }
        return true;
    }

    void obey(const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        if (verb == "open") open(words);
        if (verb == "fill") {
            xcb_window_t window = 0;
            std::string colour;
            words >> window >> colour;
            fill(window, colour);
        }
        if (verb == "title") {
            xcb_window_t window = 0;
            words >> window >> std::ws;
            std::string title;
            std::getline(words, title);
            setTitle(window, title);
        }
        if (verb == "destroy") {
            xcb_window_t window = 0;
            words >> window;
            xcb_destroy_window(connection_, window);
        }
        xcb_flush(connection_);
    }

    void open(std::istringstream& words) {
        std::uint16_t width = 0, height = 0;
        int minWidth = 0, minHeight = 0;
        std::string colour, className, title;
        words >> width >> height >> minWidth >> minHeight >> colour >> className >> std::ws;
        std::getline(words, title);
        const auto window = xcb_generate_id(connection_);
        const std::uint32_t values[] = {pixelOf(colour), XCB_EVENT_MASK_EXPOSURE};
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root, 0, 0, width,
                          height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
        setTitle(window, title);
        const std::string classes = className + '\0' + className + '\0';
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
                            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(classes.size()),
                            classes.data());
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, protocols_, XCB_ATOM_ATOM,
                            32, 1, &deleteWindow_);
        xcb_size_hints_t hints{};
        xcb_icccm_size_hints_set_min_size(&hints, minWidth, minHeight);
        xcb_icccm_set_wm_normal_hints(connection_, window, &hints);
        xcb_map_window(connection_, window);
        xcb_flush(connection_);
        std::cout << "window " << window << std::endl;
    }

    void setTitle(xcb_window_t window, const std::string& title) {
        for (const auto property : {xcb_atom_t{XCB_ATOM_WM_NAME}, atom("_NET_WM_NAME")})
            xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property,
                                atom("UTF8_STRING"), 8, static_cast<std::uint32_t>(title.size()),
                                title.data());
    }

    static std::uint32_t pixelOf(const std::string& colour) {
        return static_cast<std::uint32_t>(std::stoul(colour, nullptr, 16));
    }

    void fill(xcb_window_t window, const std::string& colour) {
        const auto pixel = pixelOf(colour);
        xcb_change_window_attributes(connection_, window, XCB_CW_BACK_PIXEL, &pixel);
        xcb_clear_area(connection_, 0, window, 0, 0, 0, 0);
    }

    void handleEvents() {
        while (auto* event = xcb_poll_for_event(connection_)) {
            if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE) {
                const auto* message = reinterpret_cast<xcb_client_message_event_t*>(event);
                if (message->type == protocols_ && message->data.data32[0] == deleteWindow_) {
                    xcb_destroy_window(connection_, message->window);
                    xcb_flush(connection_);
                    std::cout << "closed " << message->window << std::endl;
                }
            }
            std::free(event);
        }
    }

    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
    xcb_atom_t protocols_ = 0;
    xcb_atom_t deleteWindow_ = 0;
};

}  // namespace

int main() { PlainWindows().run(); }
