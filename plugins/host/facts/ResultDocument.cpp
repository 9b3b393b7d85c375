#include "ResultDocument.h"

#include "HostError.h"

#include <tandril-result/PrintableText.h>

#include <string_view>

namespace HostFacts {

using TandrilResult::PrintableLine;
using TandrilResult::PrintableText;

namespace {

const xmlChar* AsXml(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

} // namespace

ResultDocument::ResultDocument()
    : buffer_(xmlBufferCreate()), writer_(xmlNewTextWriterMemory(buffer_.get(), 0)) {
    if (!buffer_ || !writer_) {
        throw HostError("Unable to set memory aside for the result");
    }
    Check(xmlTextWriterStartDocument(writer_.get(), nullptr, "UTF-8", nullptr));
    OpenElement("output", nullptr, nullptr);
}

ResultDocument::Element ResultDocument::OpenList() {
    OpenElement("list", "type", "structure");
    return Element(*this);
}

ResultDocument::Element ResultDocument::OpenStructure(const char* typeName) {
    OpenElement("structure", "typeName", typeName);
    return Element(*this);
}

ResultDocument::Element ResultDocument::OpenField(const char* name) {
    OpenElement("field", "name", name);
    return Element(*this);
}

void ResultDocument::AddNumber(const char* name, long value) {
    const Element field = OpenField(name);
    WriteElement("int", std::to_string(value));
}

void ResultDocument::AddSwitch(const char* name, bool value) {
    const Element field = OpenField(name);
    WriteElement("bool", value ? "true" : "false");
}

void ResultDocument::AddText(const char* name, const std::string& value) {
    const Element field = OpenField(name);
    WriteElement("string", PrintableText(value));
}

void ResultDocument::AddTexts(const char* name, const std::vector<std::string>& values) {
    const Element field = OpenField(name);
    OpenElement("list", "type", "string");
    for (const std::string& value : values) {
        WriteElement("string", PrintableText(value));
    }
    CloseElement();
}

void ResultDocument::AddNumbers(const char* name, const std::vector<long>& values) {
    const Element field = OpenField(name);
    OpenElement("list", "type", "int");
    for (const long value : values) {
        WriteElement("int", std::to_string(value));
    }
    CloseElement();
}

void ResultDocument::AddError(const std::string& problem) {
    errorLines_ += "ERROR:" + PrintableLine(problem) + "\n";
}

std::string ResultDocument::Finish() {
    if (HasErrors()) {
        return errorLines_;
    }
    Check(xmlTextWriterEndDocument(writer_.get()));
    Check(xmlTextWriterFlush(writer_.get()));
    if (hasFailed_) {
        throw HostError("Unable to write the result: out of memory");
    }
    const auto* text = reinterpret_cast<const char*>(xmlBufferContent(buffer_.get()));
    return std::string(text, static_cast<std::size_t>(xmlBufferLength(buffer_.get())));
}

void ResultDocument::OpenElement(const char* tag, const char* attribute, const char* value) {
    Check(xmlTextWriterStartElement(writer_.get(), AsXml(tag)));
    if (attribute != nullptr) {
        Check(xmlTextWriterWriteAttribute(writer_.get(), AsXml(attribute), AsXml(value)));
    }
}

void ResultDocument::CloseElement() {
    Check(xmlTextWriterEndElement(writer_.get()));
}

void ResultDocument::WriteElement(const char* tag, const std::string& text) {
    Check(xmlTextWriterWriteElement(writer_.get(), AsXml(tag), AsXml(text.c_str())));
}

void ResultDocument::Check(int writerResult) {
    hasFailed_ = hasFailed_ || writerResult < 0;
}

} // namespace HostFacts
