#pragma once

#include "probe/ProbeJson.h"

#include <string>
#include <vector>

namespace tavrel {

/// What is wrong with `response`, one sentence for each member of `expect` that it does not meet.
///
/// A member of `expect` meets the member of its name; a name that begins with "/" is a JSON Pointer
/// into the response. Missing counts as null, numbers compare by value, and a response that is
/// null counts as an object without members. An `expect` that is null itself is met by null and by
/// an object whose members are all null.
std::vector<std::string> differences(const probe::Json& expect, const probe::Json& response);

/// Runs one data case and says what is wrong: the response against "expect", and the files behind
/// it against "expectFiles" (relative path to text, null for a file that must not be there).
std::vector<std::string> problemsOfCase(const std::string& line);

}  // namespace tavrel
