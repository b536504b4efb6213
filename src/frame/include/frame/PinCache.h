#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace vlm {

/// The PIN that was last confirmed for each specialist, for the life of the loaded library. Shown and logged nowhere.
class PinCache {
public:
    /// "" when there is none.
    std::string Get(std::int32_t specialist) const {
        const auto found = pins_.find(specialist);
        return found == pins_.end() ? std::string() : found->second;
    }
    void Set(std::int32_t specialist, const std::string& pin) { pins_[specialist] = pin; }
    void Remove(std::int32_t specialist) { pins_.erase(specialist); }

private:
    std::map<std::int32_t, std::string> pins_;
};

}  // namespace vlm
