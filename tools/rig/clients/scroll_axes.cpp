#include "tools/rig/clients/scroll_axes.hpp"

#include <memory>

namespace orvel::rig {

std::optional<ScrollDistance> ScrollAxes::distanceOf(const XIDeviceEvent& motion) {
    ScrollDistance distance;
    const double* value = motion.valuators.values;
    for (int number = 0; number < motion.valuators.mask_len * 8; ++number) {
        if (!XIMaskIsSet(motion.valuators.mask, number)) {
            continue;
        }
        if (Axis* axis = find(motion.sourceid, number)) {
            double& way = axis->vertical ? distance.down : distance.right;
            way = (*value - axis->position) / axis->increment;
            axis->position = *value;
        }
        ++value;
    }
    if (distance.down == 0 && distance.right == 0) {
        return std::nullopt;
    }
    return distance;
}

void ScrollAxes::readPositions() {
    int count = 0;
    const std::unique_ptr<XIDeviceInfo, decltype(&XIFreeDeviceInfo)> devices(
        XIQueryDevice(display_, XIAllDevices, &count), XIFreeDeviceInfo);
    axes_.clear();
    for (int at = 0; at < count; ++at) {
        axes_[devices.get()[at].deviceid] = axesOf(devices.get()[at]);
    }
}

ScrollAxes::Axis* ScrollAxes::find(int device, int number) {
    const auto axes = axes_.find(device);
    if (axes == axes_.end()) {
        return nullptr;
    }
    const auto axis = axes->second.find(number);
    return axis == axes->second.end() ? nullptr : &axis->second;
}

ScrollAxes::AxesByNumber ScrollAxes::axesOf(const XIDeviceInfo& device) {
    AxesByNumber axes;
    for (int at = 0; at < device.num_classes; ++at) {
        if (device.classes[at]->type == XIScrollClass) {
            const auto* scroll = reinterpret_cast<const XIScrollClassInfo*>(device.classes[at]);
            axes[scroll->number].vertical = scroll->scroll_type == XIScrollTypeVertical;
            axes[scroll->number].increment = scroll->increment;
        }
    }
    for (int at = 0; at < device.num_classes; ++at) {
        if (device.classes[at]->type == XIValuatorClass) {
            const auto* valuator = reinterpret_cast<const XIValuatorClassInfo*>(device.classes[at]);
            if (const auto axis = axes.find(valuator->number); axis != axes.end()) {
                axis->second.position = valuator->value;
            }
        }
    }
    return axes;
}

}  // namespace orvel::rig
