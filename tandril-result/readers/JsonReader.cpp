#include "../Errors.h"
#include "JsonEvents.h"
#include "PieceReader.h"
#include "Readers.h"

namespace TandrilResult {

namespace {

std::string PathText(const std::vector<std::string>& path) {
    std::string text;
    for (const std::string& key : path) {
        text += (text.empty() ? "" : ".") + key;
    }
    return text;
}

template <typename Input>
void ReadValue(Input&& input, const std::vector<std::string>& path, const RecordSink& take) {
    JsonEvents events(path, take);
    Record::sax_parse(std::forward<Input>(input), &events);
    if (!events.HasFound()) {
        throw InputError("there is nothing at '" + PathText(path) + "'");
    }
}

} // namespace

void ReadJson(std::istream& input, const std::vector<std::string>& path, const RecordSink& take) {
    ReadValue(input, path, take);
}

void ReadJsonLines(std::istream& input, const std::vector<std::string>& path,
                   const RecordSink& take) {
    PieceReader lines(input, '\n');
    std::string line;
    while (lines.Next(line)) {
        if (line.find_first_not_of(" \t\r") == std::string::npos) {
            continue;
        }
        try {
            ReadValue(line, path, take);
        } catch (const InputError& problem) {
            throw InputError("in " + lines.Place() + " of the input: " + problem.what());
        }
    }
}

} // namespace TandrilResult
