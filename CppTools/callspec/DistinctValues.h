#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace CppTools::CallSpec {

/// Values in the order added, each once. A few are looked through; many are also kept sorted, so
/// that adding and finding stay logarithmic.
template <typename Value>
class DistinctValues {
  public:
    DistinctValues() = default;
    DistinctValues(const DistinctValues&) = delete;
    DistinctValues& operator=(const DistinctValues&) = delete;

    const std::vector<Value>& InOrder() const { return values_; }

    bool Contains(const Value& value) const {
        return sorted_ ? sorted_->contains(value)
                       : std::find(values_.begin(), values_.end(), value) != values_.end();
    }

    /// Must not be there yet.
    void Add(Value value) {
        values_.push_back(std::move(value));
        if (!sorted_ && values_.size() > kFew) {
            sorted_ = std::make_unique<Places>(ByValue{&values_});
            for (std::size_t place = 0; place < kFew; ++place) {
                sorted_->insert(place);
            }
        }
        if (sorted_) {
            sorted_->insert(values_.size() - 1);
        }
    }

  private:
    static constexpr std::size_t kFew = 32;

    /// Orders places among the values by what stands there.
    struct ByValue {
        using is_transparent = void;

        const Value& At(std::size_t place) const { return (*values)[place]; }

        bool operator()(std::size_t one, std::size_t other) const { return At(one) < At(other); }

        bool operator()(std::size_t place, const Value& value) const { return At(place) < value; }

        bool operator()(const Value& value, std::size_t place) const { return value < At(place); }

        const std::vector<Value>* values;
    };

    using Places = std::set<std::size_t, ByValue>;

    std::vector<Value> values_;
    std::unique_ptr<Places> sorted_;
};

} // namespace CppTools::CallSpec
