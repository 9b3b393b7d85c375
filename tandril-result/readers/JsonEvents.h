#pragma once

#include "../Record.h"

#include <string>
#include <vector>

namespace TandrilResult {

/// Listens to the parser of one JSON value and makes records of what stands at a path of keys.
/// Only the record that is being read is held.
class JsonEvents : public nlohmann::json_sax<Record> {
  public:
    JsonEvents(const std::vector<std::string>& path, const RecordSink& take)
        : path_(path), take_(take) {}

    /// Whether the path led to something.
    bool HasFound() const { return hasFound_; }

    bool null() override;
    bool boolean(bool value) override;
    bool number_integer(number_integer_t value) override;
    bool number_unsigned(number_unsigned_t value) override;
    bool number_float(number_float_t value, const string_t& text) override;
    bool string(string_t& value) override;
    bool binary(binary_t& value) override;
    bool start_object(std::size_t size) override;
    bool key(string_t& name) override;
    bool end_object() override;
    bool start_array(std::size_t size) override;
    bool end_array() override;

    /// Throws InputError with the parser's words.
    bool parse_error(std::size_t position, const std::string& token,
                     const nlohmann::detail::exception& problem) override;

  private:
    bool IsAtRecord() const;

    bool IsInRecord() const { return !open_.empty(); }

    bool Open(Record container);
    bool Close();
    bool AddScalar(Record value);
    Record& Insert(Record value);
    void EndValue();

    const std::vector<std::string>& path_;
    const RecordSink& take_;

    // Where the parser is outside of records: how many objects and arrays are open, and how many
    // keys of the path led to the value that is being read.
    std::size_t depth_ = 0;
    std::size_t matched_ = 0;
    bool isInRows_ = false; ///< Within the array of records.
    bool hasFound_ = false;

    // The record that is being read: the containers that are open in it, outermost first.
    Record record_;
    std::vector<Record*> open_;
    std::string key_;
};

} // namespace TandrilResult
