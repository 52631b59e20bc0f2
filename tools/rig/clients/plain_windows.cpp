// Windows of one colour, made and changed by lines on standard input:
//   open WIDTH HEIGHT MIN_WIDTH MIN_HEIGHT RRGGBB CLASS TITLE...     answers "window NUMBER"
//   fill NUMBER RRGGBB        another colour
//   title NUMBER TITLE...     another title
//   destroy NUMBER
// Says "closed NUMBER" when the window manager asked to close a window, which is then destroyed.

#include "tools/rig/clients/line_client.hpp"

#include <xcb/xcb_icccm.h>

#include <cstdint>
#include <iostream>
#include <sstream>
#include <string>

namespace orvel::rig {
namespace {

class PlainWindows final : public LineClient {
public:
    PlainWindows() : protocols_(atom("WM_PROTOCOLS")), deleteWindow_(atom("WM_DELETE_WINDOW")) {}

private:
    void obey(const std::string& line) override {
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
            xcb_destroy_window(connection(), window);
        }
    }

    void open(std::istringstream& words) {
        std::uint16_t width = 0, height = 0;
        int minWidth = 0, minHeight = 0;
        std::string colour, className, title;
        words >> width >> height >> minWidth >> minHeight >> colour >> className >> std::ws;
        std::getline(words, title);
        const auto window = xcb_generate_id(connection());
        const std::uint32_t values[] = {pixelOf(colour), XCB_EVENT_MASK_EXPOSURE};
        xcb_create_window(connection(), XCB_COPY_FROM_PARENT, window, screen().root, 0, 0, width,
                          height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
        setTitle(window, title);
        const std::string classes = className + '\0' + className + '\0';
        xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
                            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(classes.size()),
                            classes.data());
        xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, protocols_, XCB_ATOM_ATOM,
                            32, 1, &deleteWindow_);
        xcb_size_hints_t hints{};
        xcb_icccm_size_hints_set_min_size(&hints, minWidth, minHeight);
        xcb_icccm_set_wm_normal_hints(connection(), window, &hints);
        xcb_map_window(connection(), window);
        xcb_flush(connection());
        std::cout << "window " << window << std::endl;
    }

    void setTitle(xcb_window_t window, const std::string& title) {
        for (const auto property : {xcb_atom_t{XCB_ATOM_WM_NAME}, atom("_NET_WM_NAME")})
            xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, property,
                                atom("UTF8_STRING"), 8, static_cast<std::uint32_t>(title.size()),
                                title.data());
    }

    static std::uint32_t pixelOf(const std::string& colour) {
        return static_cast<std::uint32_t>(std::stoul(colour, nullptr, 16));
    }

    void fill(xcb_window_t window, const std::string& colour) {
        const auto pixel = pixelOf(colour);
        xcb_change_window_attributes(connection(), window, XCB_CW_BACK_PIXEL, &pixel);
        xcb_clear_area(connection(), 0, window, 0, 0, 0, 0);
    }

    void handle(const xcb_generic_event_t& event) override {
        if ((event.response_type & 0x7f) != XCB_CLIENT_MESSAGE) return;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.type != protocols_ || message.data.data32[0] != deleteWindow_) return;
        xcb_destroy_window(connection(), message.window);
        xcb_flush(connection());
        std::cout << "closed " << message.window << std::endl;
    }

    xcb_atom_t protocols_;
    xcb_atom_t deleteWindow_;
};

}  // namespace
}  // namespace orvel::rig

int main() { orvel::rig::PlainWindows().run(); }
