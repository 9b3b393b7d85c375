#pragma once

#include <tests/support/ProgramRun.h>
#include <tests/support/TempDirectory.h>
#include <tests/support/Values.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Documents that are read by programs which know nothing of this one.
namespace RoundTrip {

/// Bytes as a literal of Python.
inline std::string PythonBytes(const std::string& bytes) {
    std::string literal = "b'";
    for (const char c : bytes) {
        std::array<char, 5> escaped{};
        std::snprintf(escaped.data(), escaped.size(), "\\x%02x", static_cast<unsigned char>(c));
        literal += escaped.data();
    }
    return literal + "'";
}

inline std::string PythonTuple(const TestSupport::Value& value);

inline std::string PythonElements(const CppTools::MetaObj::MetaList& list) {
    using CppTools::MetaObj::MetaType;
    std::string elements;
    for (const auto& element : list.GetObjects()) {
        elements += PythonTuple(element) + ", ";
    }
    const MetaType type = list.GetListType();
    const std::string kind = type == MetaType::Int      ? "integer"
                             : type == MetaType::Bool   ? "boolean"
                             : type == MetaType::String ? "string"
                                                        : "structure";
    return "('list', '" + kind + "', [" + elements + "])";
}

inline std::string PythonFields(const CppTools::MetaObj::MetaStruct& structure) {
    std::string fields;
    for (const auto& name : structure.GetFieldNames()) {
        fields += "(" + PythonBytes(name) + ", " + PythonTuple(structure.GetField(name)) + "), ";
    }
    return "('struct', " + PythonBytes(structure.GetTypeName()) + ", [" + fields + "])";
}

/// A value tree as the tuples that the comparing script knows.
inline std::string PythonTuple(const TestSupport::Value& value) {
    using namespace CppTools::MetaObj;
    if (const auto number = std::dynamic_pointer_cast<MetaInt>(value)) {
        return "('int', " + std::to_string(number->GetValue()) + ")";
    }
    if (const auto truth = std::dynamic_pointer_cast<MetaBool>(value)) {
        return truth->GetValue() ? "('bool', True)" : "('bool', False)";
    }
    if (const auto text = std::dynamic_pointer_cast<MetaString>(value)) {
        return "('text', " + PythonBytes(text->GetValue()) + ")";
    }
    if (const auto list = std::dynamic_pointer_cast<MetaList>(value)) {
        return PythonElements(*list);
    }
    return PythonFields(*std::dynamic_pointer_cast<MetaStruct>(value));
}

/// What stands for a document that must not be readable.
inline const std::string kRefused = "('refused',)";

/// Documents of one kind, collected so that each program is started once for all of them.
class Documents {
  public:
    explicit Documents(std::string kind) : kind_(std::move(kind)) {}

    /// A document, and as a literal of Python what is to be read from it.
    void Add(const std::string& content, const std::string& expected) {
        const std::string name = std::to_string(10'000 + files_.size());
        files_.push_back(directory_.Write(name + ".document", content));
        directory_.Write(name + ".value", expected);
    }

    /// What the comparison says when each document reads as expected.
    std::string Agreement() const { return std::to_string(files_.size()) + " documents\n"; }

    /// What it says.
    std::string Compared() const {
        const auto run =
            TestSupport::RunProgram({"python3", COMPARE_DOCUMENTS, kind_, directory_.Path()}, "/");
        return run.out + run.err;
    }

    /// A run of a program over all of them.
    TestSupport::ChildRun Run(std::vector<std::string> words) const {
        words.insert(words.end(), files_.begin(), files_.end());
        return TestSupport::RunProgram(words, "/");
    }

  private:
    std::string kind_;
    std::vector<std::string> files_;
    TestSupport::TempDirectory directory_;
};

} // namespace RoundTrip
