#pragma once

namespace tavrel {

struct ProgramOptions;

/// Opens the window and runs until it is closed, or until the picture asked for is written. The
/// exit status: 0, or 1 where the picture could not be written.
int runApplication(const ProgramOptions& options, char* programName);

}  // namespace tavrel
