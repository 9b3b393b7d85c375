#include "Conversion.h"

#include "DescriptorStream.h"
#include "Errors.h"
#include "Program.h"
#include "ResultWriter.h"
#include "ScalarText.h"
#include "readers/Readers.h"

#include <exception>
#include <iterator>
#include <unistd.h>

namespace TandrilResult {

namespace {

void ReadRecords(std::istream& input, const Options& options, const RecordSink& take) {
    switch (options.format) {
    case Format::Json:
        return ReadJson(input, options.rowsPath, take);
    case Format::JsonLines:
        return ReadJsonLines(input, options.rowsPath, take);
    case Format::Tsv:
        return ReadTsv(input, options.columns, take);
    case Format::Csv:
        return ReadCsv(input, options.columns, take);
    case Format::Pairs:
        return ReadPairs(input, '\n', take);
    case Format::Lines:
        return ReadPieces(input, '\n', take);
    case Format::Nul:
        if (options.listType) {
            return ReadPieces(input, '\0', take);
        }
        return options.columns.empty() ? ReadPairs(input, '\0', take)
                                       : ReadNulColumns(input, options.columns, take);
    }
}

/// One result in the making.
class Conversion {
  public:
    Conversion(const Options& options, HeldOutput& output)
        : options_(options),
          source_(options.program.empty() ? "standard input"
                                          : "the output of '" + options.program.front() + "'"),
          plan_(options.fields),
          writer_(output, options.one ? ResultShape::One : ResultShape::List,
                  options.listType ? WordFor(*options.listType) : "structure") {}

    /// Throws ResultError for input that makes no result.
    void Read(std::istream& input) {
        try {
            ReadRecords(input, options_, [this](const Record& record) { Add(record); });
        } catch (const InputError& problem) {
            throw ResultError("Unable to read " + source_ + " as " + options_.formatName + ": " +
                              problem.what());
        }
    }

    void Finish() {
        try {
            writer_.Finish();
        } catch (const InputError& problem) {
            throw ResultError("Unable to use " + source_ + ": " + problem.what());
        }
    }

  private:
    void Add(const Record& record) {
        ++count_;
        try {
            if (options_.listType) {
                writer_.Add(ScalarElement(record, *options_.listType) + "\n");
            } else {
                UnfoldRows(record, options_.nesting,
                           [this](const Row& row) { writer_.Add(plan_.StructureOf(row)); });
            }
        } catch (const InputError& problem) {
            throw ResultError("Unable to use record " + std::to_string(count_) + " of " + source_ +
                              ": " + problem.what());
        }
    }

    const Options& options_;
    std::string source_;
    FieldPlan plan_;
    ResultWriter writer_;
    long count_ = 0;
};

void ConvertInput(Conversion& conversion) {
    DescriptorStream input(STDIN_FILENO);
    conversion.Read(input);
    conversion.Finish();
}

std::string ReadInput() {
    try {
        DescriptorStream input(STDIN_FILENO);
        return {std::istreambuf_iterator<char>(input), {}};
    } catch (const InputError& problem) {
        throw ResultError(std::string("Unable to read standard input: ") + problem.what());
    }
}

/// The program's name and arguments, the one that comes on standard input included.
std::vector<std::string> WordsFor(const Options& options) {
    std::vector<std::string> words = options.program;
    if (options.argumentFromInput) {
        words.push_back(ReadInput());
        if (words.back().find('\0') != std::string::npos) {
            throw ResultError("Unable to run '" + words.front() +
                              "': the argument on standard input holds a NUL");
        }
    }
    return words;
}

/// A program that failed is the reason, whatever else is wrong with what it printed. Whether it
/// failed is known only when its output was read to the end.
void ConvertOutputOfProgram(const Options& options, Conversion& conversion) {
    Program program(WordsFor(options));
    DescriptorStream input(program.Output());
    std::exception_ptr problem;
    try {
        conversion.Read(input);
    } catch (const ResultError&) {
        if (!input.eof()) {
            throw;
        }
        problem = std::current_exception();
    }
    const int status = program.Wait();
    const bool isEmpty = input.IsEmpty() && status == options.emptyStatus;
    if (status != 0 && !isEmpty) {
        throw ResultError("'" + options.program.front() + "' failed with status " +
                          std::to_string(status));
    }
    if (problem && !isEmpty) {
        std::rethrow_exception(problem);
    }
    conversion.Finish();
}

} // namespace

void Convert(const Options& options, HeldOutput& output) {
    Conversion conversion(options, output);
    if (options.program.empty()) {
        ConvertInput(conversion);
    } else {
        ConvertOutputOfProgram(options, conversion);
    }
}

} // namespace TandrilResult
