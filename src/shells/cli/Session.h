// What all commands of one call of the program share.
#pragma once

#include "Arguments.h"
#include "Interruption.h"
#include "Output.h"
#include "platform/linux/PollRunLoop.h"

namespace corvane::cli {

struct Session {
  const Arguments& arguments;
  Output& output;
  const Interruption& interruption;
  PollRunLoop& runLoop;
};

}  // namespace corvane::cli
