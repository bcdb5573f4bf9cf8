#pragma once

namespace tavrel {

/// Lets screen readers read `TerminalGridView` as a terminal with the text of the rows in sight.
/// Cheap to call again.
void installGridAccessibility();

}  // namespace tavrel
