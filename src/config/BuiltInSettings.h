#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// A section of the settings file that the program writes by itself.
enum class SettingsSection { editor, terminal, sidebar, toolbar, colors, keys };

/// The name of the section in the text.
std::string_view sectionName(SettingsSection section);

/// The settings text of last resort, complete but for the section `toolbar`.
std::string builtInSettingsText();

/// The lines that an older settings file must get where they are missing, without indentation.
std::vector<std::string> expectedLines(SettingsSection section);

/// The whole section as an older settings file gets it, from its name to its closing brace,
/// indented, without a line feed at the end.
std::string sectionBlock(SettingsSection section);

}  // namespace tavrel
