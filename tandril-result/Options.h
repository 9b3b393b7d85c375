#pragma once

#include "FieldPlan.h"

#include <optional>
#include <string>
#include <vector>

namespace TandrilResult {

enum class Format { Json, JsonLines, Tsv, Csv, Pairs, Nul, Lines };

/// What the command line asks for.
struct Options {
    bool help = false; ///< With one of these two nothing else counts.
    bool version = false;

    Format format = Format::Json;
    std::string formatName;
    std::vector<std::string> rowsPath;
    std::vector<std::string> columns;
    std::vector<std::string> program; ///< Empty: standard input is read.
    bool argumentFromInput = false;
    std::optional<int> emptyStatus;

    std::optional<ScalarType> listType; ///< Of a list of scalars; empty for structures.
    bool one = false;
    FieldRules fields;
    Nesting nesting;
};

/// Throws ResultError for words that make no sense, alone or together.
Options ParseOptions(int argc, char** argv);

} // namespace TandrilResult
