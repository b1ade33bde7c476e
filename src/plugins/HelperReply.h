// What a plug-in in its test mode has to say: a code, a comma and a message on its first line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

struct HelperReply {
  std::int32_t code = 0;  // 0: the settings are good; also for a reply that does not begin with a number
  std::string message;    // up to the end of the line
  friend bool operator==(const HelperReply&, const HelperReply&) = default;
};

/// Takes the reply apart. Blanks and line breaks between the comma and the message are skipped. Nothing when
/// there is no comma, or no message after it.
[[nodiscard]] std::optional<HelperReply> parseHelperReply(std::string_view reply);

}  // namespace corvane
