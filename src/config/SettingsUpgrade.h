#pragma once

#include <optional>
#include <string>

namespace tavrel {

/// The text of a settings file brought up to date: sections that are no longer known are gone,
/// known ones are complete, and missing ones are there. Comments and layout stay.
///
/// Nothing where there is nothing to do, where the text does not parse, and where the text that
/// came out would not. A byte-order mark stays. Costs time in proportion to the text.
std::optional<std::string> upgradedSettings(const std::string& text);

}  // namespace tavrel
