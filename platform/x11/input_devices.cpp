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
        device.hasKeys |= info.classes[i]->type == XIKeyClass;
        device.hasButtons |= info.classes[i]->type == XIButtonClass;
    }
    if (device.hasButtons) device.properties = propertiesOf(session, info.deviceid);
    return device;
}

}  // namespace

MasterDevices findMasters(X11Session& session) {
    MasterDevices masters;
    XIGetClientPointer(session.display(), 0, &masters.pointer);
    int count = 0;
    const DeviceInfos infos(XIQueryDevice(session.display(), XIAllDevices, &count));
    for (int i = 0; i < count; ++i) {
        if (infos[i].deviceid == masters.pointer) masters.keyboard = infos[i].attachment;
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

std::vector<unsigned char> heldKeys(X11Session& session, int id) {
    const ErrorTrap trap(session);
    std::vector<unsigned char> keys;
    // Closing the device would end our grab of it.
    XDevice* device = XOpenDevice(session.display(), static_cast<XID>(id));
    if (device == nullptr) return keys;
    XDeviceState* state = XQueryDeviceState(session.display(), device);
    if (state == nullptr) return keys;
    const XInputClass* input = state->data;
    for (int i = 0; i < state->num_classes; ++i) {
        if (input->c_class == KeyClass) {
            const auto* bits = reinterpret_cast<const XKeyState*>(input)->keys;
            for (unsigned key = 8; key < 256; ++key) {
                if ((bits[key / 8] >> (key % 8) & 1) != 0) {
                    keys.push_back(static_cast<unsigned char>(key));
                }
            }
        }
        input = reinterpret_cast<const XInputClass*>(reinterpret_cast<const char*>(input) +
                                                     input->length);
    }
    XFreeDeviceState(state);
    return keys;
}

}  // namespace orvel::x11
