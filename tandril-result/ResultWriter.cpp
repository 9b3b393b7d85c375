#include "ResultWriter.h"

#include "Errors.h"
#include "PrintableText.h"
#include "ScalarText.h"

namespace TandrilResult {

namespace {

constexpr char kHead[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<output>";
constexpr char kEndOfList[] = "</list></output>\n";

} // namespace

ResultWriter::ResultWriter(HeldOutput& output, ResultShape shape, std::string listType)
    : output_(output), shape_(shape), listType_(std::move(listType)) {
    output_.Write(kHead);
    if (shape_ == ResultShape::List) {
        output_.Write("<list type=\"" + listType_ + "\">\n");
    }
}

void ResultWriter::Add(const std::string& element) {
    if (shape_ == ResultShape::List) {
        output_.Write(element);
        return;
    }
    if (!only_.empty()) {
        throw InputError("it is one more than the one that --one allows");
    }
    only_ = element;
}

void ResultWriter::Finish() {
    if (shape_ == ResultShape::List) {
        output_.Write(kEndOfList);
    } else if (only_.empty()) {
        throw InputError("there is no record, but --one needs one");
    } else {
        output_.Write(only_ + "</output>\n");
    }
    output_.Flush();
}

void WriteFailure(HeldOutput& output, const std::string& reason) {
    const std::string line = "ERROR:" + PrintableLine(reason);
    if (output.HasBegun()) {
        // The reader quotes what it cannot read as a number.
        output.Write("<int>" + ElementText(line) + "</int>\n" + kEndOfList);
    } else {
        output.Discard();
        output.Write(line + "\n");
    }
    output.Flush();
}

} // namespace TandrilResult
