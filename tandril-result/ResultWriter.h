#pragma once

#include "HeldOutput.h"

#include <string>

namespace TandrilResult {

enum class ResultShape {
    List, ///< A list of the elements that are added, which may be none.
    One   ///< The one element that is added; neither none nor several.
};

/// Writes the document, element by element.
///
/// A failure must reach whoever reads the document. Up to the first megabyte error lines stand in
/// its place. Later the list gets one more element, which no reader can make a value of, and whose
/// text is the reason, so that the reader refuses the whole document and says why.
class ResultWriter {
  public:
    /// `listType` is the type attribute of a list: "structure" or the word for a scalar.
    ResultWriter(HeldOutput& output, ResultShape shape, std::string listType);

    /// One element, complete. Throws InputError for a second one where there must be one only.
    void Add(const std::string& element);

    /// Throws InputError when there must be one element and there is none.
    void Finish();

  private:
    HeldOutput& output_;
    ResultShape shape_;
    std::string listType_;
    std::string only_; ///< Held until it is known that no other follows.
};

/// Ends what has been written so that it is understood as a failure for this reason.
void WriteFailure(HeldOutput& output, const std::string& reason);

} // namespace TandrilResult
