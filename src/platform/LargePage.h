#pragma once

#include <cstddef>

namespace tavrel {

constexpr std::size_t largePageBytes = std::size_t(2) << 20;

/// `largePageBytes` of fresh memory from the system, aligned to their size, with the wish that one
/// page backs all of it: first use then costs a quarter of what small pages cost. Null where there
/// is no memory. Any thread.
void* allocateLargePage();

/// Gives one back.
void freeLargePage(void* page);

}  // namespace tavrel
