#include "app/replay/event_reader.hpp"

#include "platform/memory/event_names.hpp"

namespace orvel::replay {

static void read(const JsonField& field, EventType& into) {
    const std::string* name = field.json().asString();
    if (name == nullptr) return field.fail("must be a text");
    const auto type = memory::eventTypeNamed(*name);
    if (!type) return field.fail(inQuotes(*name) + " is no type of event");
    into = *type;
}

void read(const JsonField& field, Event& into) {
    ObjectReader object(field);
    object.required("type", into.type);
    object.optional("key", into.keyCode);
    object.optional("flags", into.flags);
    object.optional("button", into.buttonNumber);
    object.optional("deltaAxis1", into.deltaAxis1);
    object.optional("pointDeltaAxis1", into.pointDeltaAxis1);
    object.optional("precise", into.hasPreciseScrollingDeltas);
    object.optional("repeat", into.isAutorepeat);
    object.optional("userData", into.userData);
    object.finish();
}

}  // namespace orvel::replay
