#pragma once

#include "engine/rule.hpp"

#include <span>
#include <string>

namespace orvel {

/// Every rule in the order in which events meet them. Nothing else decides order.
std::span<const Rule> ruleTable();

/// The table as text for people, in Markdown: name, events and switch of each rule.
std::string describeRules();

}  // namespace orvel
