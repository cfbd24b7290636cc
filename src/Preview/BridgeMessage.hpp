#pragma once

#include <optional>
#include <string>

namespace corvanta {

/// A message of the page script: an object whose fields are read by name. A field that is missing or of
/// another type gives nothing, and so does every field of a message that is no object.
class BridgeMessage {
public:
    BridgeMessage() = default;
    BridgeMessage(const BridgeMessage&) = delete;
    BridgeMessage& operator=(const BridgeMessage&) = delete;
    virtual ~BridgeMessage() = default;

    /// UTF-8.
    virtual std::optional<std::string> string(const std::string& field) const = 0;
    virtual std::optional<double> number(const std::string& field) const = 0;
};

} // namespace corvanta
