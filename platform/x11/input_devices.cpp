#include "platform/x11/input_devices.hpp"

#include <X11/Xlib.h>
#include <X11/extensions/XInput.h>
#include <X11/extensions/XInput2.h>

#include <memory>

namespace orvel::x11 {

namespace {

struct DeviceInfoDeleter {
    void operator()(XIDeviceInfo* devices) const { XIFreeDeviceInfo(devices); }
};
using DeviceInfos = std::unique_ptr<XIDeviceInfo[], DeviceInfoDeleter>;

struct XFreeDeleter {
    void operator()(void* memory) const { XFree(memory); }
};

std::vector<std::string> propertiesOf(X11Session& session, int id) {
    int count = 0;
    const std::unique_ptr<Atom[], XFreeDeleter> atoms(
        XIListProperties(session.display(), id, &count));
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) {
        const std::unique_ptr<char[], XFreeDeleter> name(XGetAtomName(session.display(), atoms[i]));
        if (name) names.emplace_back(name.get());
    }
    return names;
}

/// The server gives its synthetic devices this property and this ending of the name.
bool isSynthetic(const XIDeviceInfo& info) {
    return std::string_view(info.name).find("XTEST") != std::string_view::npos;
}

bool isSlave(const XIDeviceInfo& info) {
    return info.use == XISlaveKeyboard || info.use == XISlavePointer || info.use == XIFloatingSlave;
}

InputDevice describe(X11Session& session, const XIDeviceInfo& info) {
    InputDevice device{.id = info.deviceid,
                       .name = info.name,
                       .isEnabled = info.enabled != False,
                       .isFloating = info.use == XIFloatingSlave};
    for (int i = 0; i < info.num_classes; ++i) {
        const XIAnyClassInfo& type = *info.classes[i];
        device.hasKeys |= type.type == XIKeyClass;
        device.scrolls |= type.type == XIScrollClass;
        if (type.type == XIButtonClass) {
            device.buttonCount = reinterpret_cast<const XIButtonClassInfo&>(type).num_buttons;
        }
    }
    if (device.buttonCount > 0) device.properties = propertiesOf(session, info.deviceid);
    return device;
}

}  // namespace

MasterDevices findMasters(X11Session& session) {
    MasterDevices masters;
    // A connection that has not used a pointer yet has none assigned; it would get the first.
    const bool isAssigned = XIGetClientPointer(session.display(), 0, &masters.pointer) != False;
    int count = 0;
    const DeviceInfos infos(XIQueryDevice(session.display(), XIAllDevices, &count));
    for (int i = 0; i < count; ++i) {
        const XIDeviceInfo& info = infos[i];
        if (info.use != XIMasterPointer || masters.keyboard != 0) continue;
        if (isAssigned && info.deviceid != masters.pointer) continue;
        masters.pointer = info.deviceid;
        masters.keyboard = info.attachment;
    }
    for (int i = 0; i < count; ++i) {
        const XIDeviceInfo& info = infos[i];
        if (!isSynthetic(info)) continue;
        if (info.attachment == masters.pointer) masters.syntheticPointer = info.deviceid;
        if (info.attachment == masters.keyboard) masters.syntheticKeyboard = info.deviceid;
    }
    return masters;
}

std::vector<InputDevice> listDevices(X11Session& session, const MasterDevices& masters) {
    int count = 0;
    const DeviceInfos infos(XIQueryDevice(session.display(), XIAllDevices, &count));
    std::vector<InputDevice> devices;
    for (int i = 0; i < count; ++i) {
        const XIDeviceInfo& info = infos[i];
        const bool isOurs = info.use == XIFloatingSlave || info.attachment == masters.pointer ||
                            info.attachment == masters.keyboard;
        if (isSlave(info) && isOurs && !isSynthetic(info)) {
            devices.push_back(describe(session, info));
        }
    }
    return devices;
}

std::optional<InputDevice> readDevice(X11Session& session, int id) {
    const ErrorTrap trap(session);
    int count = 0;
    const DeviceInfos infos(XIQueryDevice(session.display(), id, &count));
    if (!infos || count == 0 || !isSlave(infos[0]) || isSynthetic(infos[0])) return std::nullopt;
    return describe(session, infos[0]);
}

namespace {

/// Calls `visit` for each class of input that the device has.
template <typename Visit>
void visitState(X11Session& session, int id, Visit visit) {
    const ErrorTrap trap(session);
    // Closing the device again would end our grab of it.
    XDevice* device = XOpenDevice(session.display(), static_cast<XID>(id));
    if (device == nullptr) return;
    XDeviceState* state = XQueryDeviceState(session.display(), device);
    if (state == nullptr) return;
    const auto* bytes = reinterpret_cast<const char*>(state->data);
    for (int i = 0; i < state->num_classes; ++i) {
        const auto* input = reinterpret_cast<const XInputClass*>(bytes);
        visit(*input);
        bytes += input->length;
    }
    XFreeDeviceState(state);
}

template <typename Number>
std::vector<Number> bitsOf(const char* bytes, int first, int end) {
    std::vector<Number> numbers;
    for (int bit = first; bit < end; ++bit) {
        if ((bytes[bit / 8] >> (bit % 8) & 1) != 0) numbers.push_back(static_cast<Number>(bit));
    }
    return numbers;
}

}  // namespace

std::vector<unsigned char> heldKeys(X11Session& session, int id) {
    std::vector<unsigned char> keys;
    visitState(session, id, [&](const XInputClass& input) {
        if (input.c_class != KeyClass) return;
        keys = bitsOf<unsigned char>(reinterpret_cast<const XKeyState&>(input).keys, 8, 256);
    });
    return keys;
}

std::vector<int> heldButtons(X11Session& session, int id) {
    std::vector<int> buttons;
    visitState(session, id, [&](const XInputClass& input) {
        if (input.c_class != ButtonClass) return;
        buttons = bitsOf<int>(reinterpret_cast<const XButtonState&>(input).buttons, 1, 256);
    });
    return buttons;
}

}  // namespace orvel::x11
