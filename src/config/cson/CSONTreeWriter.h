#pragma once

#include "config/cson/CSONOutput.h"
#include "config/cson/CSONTreeBuilder.h"
#include "config/cson/CSONValue.h"

#include <string>
#include <string_view>

namespace tavrel {

/// Builds the tree of values straight from what the parser finds, as long as there is no doubt
/// that the JSON reader would build the same one from the normalised text.
///
/// It gives up on a number that JSON may refuse, on a control character, on bytes that are not
/// UTF-8 and on nesting past the limit; the JSON reader then decides and has the error.
class CSONTreeWriter final : public CSONOutput {
public:
    bool isInDoubt() const { return isInDoubt_; }
    /// The tree, once the parser is done and nothing is in doubt.
    CSONValue takeTree() { return builder_.takeTree(); }

    void openMap() override { open(); }
    void closeMap() override;
    void openArray() override { open(); }
    void closeArray() override;
    void key(const CSONToken& word) override;
    void string(const CSONToken& word) override;
    void number(std::string_view written) override;
    void boolean(bool value) override { add(CSONValue(value)); }
    void null() override { add(CSONValue()); }

private:
    void open();
    void add(CSONValue&& value);
    std::string checkedText(const CSONToken& word);

    CSONTreeBuilder builder_;
    bool isInDoubt_ = false;  // From then on nothing is built.
};

}  // namespace tavrel
