#pragma once

#include <libxml/xmlwriter.h>

#include <memory>
#include <string>
#include <vector>

namespace HostFacts {

/// What the program prints: one document with one result, or, when anything failed, the error
/// lines alone. Nothing is printed before all is known.
///
/// All text is made printable on its way in, so that whatever the machine calls things, the
/// document stays well-formed and holds what was written.
class ResultDocument {
  public:
    /// An element that is open for as long as this object lives.
    class Element {
      public:
        explicit Element(ResultDocument& document) : document_(document) {}

        ~Element() { document_.CloseElement(); }

        Element(const Element&) = delete;
        Element& operator=(const Element&) = delete;

      private:
        ResultDocument& document_;
    };

    ResultDocument();

    /// A list of structures: the result itself, or the value of a field (`OpenField`).
    [[nodiscard]] Element OpenList();
    [[nodiscard]] Element OpenStructure(const char* typeName);
    [[nodiscard]] Element OpenField(const char* name);

    /// Fields of the open structure.
    void AddNumber(const char* name, long value);
    void AddSwitch(const char* name, bool value);
    void AddText(const char* name, const std::string& value);
    void AddTexts(const char* name, const std::vector<std::string>& values);
    void AddNumbers(const char* name, const std::vector<long>& values);

    /// One thing that could not be found out, and why. It takes the place of the result.
    void AddError(const std::string& problem);

    bool HasErrors() const { return !errorLines_.empty(); }

    /// Ends the document: what is to be printed. Throws HostError when memory ran out.
    std::string Finish();

  private:
    struct FreeBuffer {
        void operator()(xmlBuffer* buffer) const { xmlBufferFree(buffer); }
    };

    struct FreeWriter {
        void operator()(xmlTextWriter* writer) const { xmlFreeTextWriter(writer); }
    };

    void OpenElement(const char* tag, const char* attribute, const char* value);
    void CloseElement();
    void WriteElement(const char* tag, const std::string& text);
    void Check(int writerResult);

    // The writer writes into the buffer, so it is declared behind it and released before it.
    std::unique_ptr<xmlBuffer, FreeBuffer> buffer_;
    std::unique_ptr<xmlTextWriter, FreeWriter> writer_;
    bool hasFailed_ = false;
    std::string errorLines_;
};

} // namespace HostFacts
