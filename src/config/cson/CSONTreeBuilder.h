#pragma once

#include "config/cson/CSONValue.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace tavrel {

/// Puts a tree of values together from its parts in the order of the source.
///
/// Finished values wait on one stack until the container around them ends, so nothing recurses
/// and every container is allocated once. Whoever calls keeps brackets and names in balance.
class CSONTreeBuilder {
public:
    void add(CSONValue&& value) { values_.push_back(std::move(value)); }
    /// The name of the member whose value comes next.
    void addName(std::string&& name) { names_.push_back(std::move(name)); }

    /// Begins an array or a map; answers whether there is room for one more level.
    bool open();
    void closeArray();
    void closeMap();

    /// The whole tree, once its one value is finished.
    CSONValue takeTree() { return std::move(values_.back()); }

private:
    // Ends the innermost container; gives the number of its values.
    std::size_t close();

    std::vector<CSONValue> values_;    // Finished, of all containers that are open.
    std::vector<std::string> names_;   // The names of those that are members.
    std::vector<std::size_t> starts_;  // Where the values of each open container begin.
};

}  // namespace tavrel
