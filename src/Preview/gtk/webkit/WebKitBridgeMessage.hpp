#pragma once

#include "Preview/BridgeMessage.hpp"

#include <jsc/jsc.h>

namespace corvanta {

/// A message of the page script as the web engine hands it over.
class WebKitBridgeMessage final : public BridgeMessage {
public:
    /// Borrows `value` for the time of the call that brought it.
    explicit WebKitBridgeMessage(JSCValue* value) : value_(value) {}

    std::optional<std::string> string(const std::string& field) const override;
    std::optional<double> number(const std::string& field) const override;

private:
    JSCValue* value_;
};

} // namespace corvanta
