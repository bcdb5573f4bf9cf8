#pragma once

#include "probe/ProbeRequest.h"

#include <string>
#include <string_view>

namespace tavrel::probe {

// One adaptor per engine: it turns a request into the engine's own types and the engine's answer
// into JSON, and holds no logic. It may throw `RequestError`. A new engine is a declaration here, a
// row in Adaptors.cpp and a file of its own.

Json chordAdaptor(ProbeRequest& request);
Json completeAdaptor(ProbeRequest& request);
Json csonAdaptor(ProbeRequest& request);
Json editAdaptor(ProbeRequest& request);
Json highlightAdaptor(ProbeRequest& request);
Json ignoreAdaptor(ProbeRequest& request);
Json lineDiffAdaptor(ProbeRequest& request);
Json modeAdaptor(ProbeRequest& request);
Json settingsAdaptor(ProbeRequest& request);
Json termAdaptor(ProbeRequest& request);
Json themeAdaptor(ProbeRequest& request);
Json treeAdaptor(ProbeRequest& request);
Json walkAdaptor(ProbeRequest& request);

/// Answers one request; the answer to a request that names no engine, or that its adaptor cannot
/// read, is `{"error": why}`. Never throws but when memory ends.
Json respond(const Json& request);

/// Answers one line with one line, without the line feed.
std::string respondToLine(std::string_view line);

}  // namespace tavrel::probe
