#pragma once

#include "config/BuiltInResources.h"
#include "config/LanguageMode.h"
#include "config/cson/TavrelCSONBackend.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace tavrel {

/// The mode that ships with the editor.
inline LanguageMode shippedMode(const std::string& id)
{
    const auto modeText = BuiltInResources().textAt("Languages/" + id + ".cson");
    const auto value = TavrelCSONBackend::parseCSON(modeText.value_or("{}"));
    const auto mode = value ? LanguageMode::fromValue(*value) : std::nullopt;
    EXPECT_TRUE(mode) << id;
    return mode.value_or(LanguageMode::plain());
}

}  // namespace tavrel
