#include "JsonEvents.h"

#include "../Errors.h"

namespace TandrilResult {

namespace {

/// What follows the records to their depth stays within the stack.
constexpr std::size_t kDeepest = 1000;

} // namespace

bool JsonEvents::null() {
    return AddScalar(nullptr);
}

bool JsonEvents::boolean(bool value) {
    return AddScalar(value);
}

bool JsonEvents::number_integer(number_integer_t value) {
    return AddScalar(value);
}

bool JsonEvents::number_unsigned(number_unsigned_t value) {
    return AddScalar(value);
}

bool JsonEvents::number_float(number_float_t, const string_t& text) {
    return AddScalar(text);
}

bool JsonEvents::string(string_t& value) {
    return AddScalar(std::move(value));
}

bool JsonEvents::binary(binary_t&) {
    return true; // JSON has none
}

bool JsonEvents::start_object(std::size_t) {
    return Open(Record::object());
}

bool JsonEvents::key(string_t& name) {
    if (IsInRecord()) {
        key_ = std::move(name);
        if (open_.back()->contains(key_)) {
            throw InputError("an object has the key '" + key_ + "' twice");
        }
    } else if (depth_ == matched_ + 1 && matched_ < path_.size() && name == path_[matched_]) {
        ++matched_;
        if (matched_ == path_.size() && hasFound_) {
            throw InputError("an object has the key '" + name + "' twice");
        }
    }
    return true;
}

bool JsonEvents::end_object() {
    return Close();
}

bool JsonEvents::start_array(std::size_t) {
    if (!IsInRecord() && !isInRows_ && IsAtRecord()) {
        isInRows_ = true;
        hasFound_ = true;
        ++depth_;
        return true;
    }
    return Open(Record::array());
}

bool JsonEvents::end_array() {
    if (!IsInRecord() && isInRows_) {
        isInRows_ = false;
    }
    return Close();
}

bool JsonEvents::parse_error(std::size_t, const std::string&,
                             const nlohmann::detail::exception& problem) {
    const std::string text = problem.what();
    throw InputError(text.substr(text.find("] ") + 2)); // behind the name of the exception
}

bool JsonEvents::IsAtRecord() const {
    return matched_ == path_.size() && depth_ == matched_ + (isInRows_ ? 1 : 0);
}

bool JsonEvents::Open(Record container) {
    if (depth_ + open_.size() >= kDeepest) {
        throw InputError("objects and arrays are nested deeper than " + std::to_string(kDeepest) +
                         " levels");
    }
    if (IsInRecord() || IsAtRecord()) {
        Record& inserted = Insert(std::move(container));
        open_.push_back(&inserted);
    } else {
        ++depth_;
    }
    return true;
}

bool JsonEvents::Close() {
    if (IsInRecord()) {
        open_.pop_back();
    } else {
        --depth_;
    }
    EndValue();
    return true;
}

bool JsonEvents::AddScalar(Record value) {
    if (IsInRecord() || IsAtRecord()) {
        Insert(std::move(value));
    }
    EndValue();
    return true;
}

/// Puts the value where it belongs: it is the record, or it is added to the innermost container.
Record& JsonEvents::Insert(Record value) {
    if (!IsInRecord()) {
        return record_ = std::move(value);
    }
    Record& container = *open_.back();
    if (container.is_array()) {
        container.push_back(std::move(value));
        return container.back();
    }
    return container[key_] = std::move(value);
}

/// A value is over: hands it over when it was a record, and leaves the path when it led here.
void JsonEvents::EndValue() {
    if (IsInRecord()) {
        return;
    }
    if (!isInRows_ && depth_ == matched_ && matched_ == path_.size() && !hasFound_) {
        hasFound_ = true;
        take_(std::move(record_));
    } else if (isInRows_ && depth_ == matched_ + 1) {
        take_(std::move(record_));
    }
    if (depth_ == matched_ && matched_ > 0) {
        --matched_;
    }
}

} // namespace TandrilResult
