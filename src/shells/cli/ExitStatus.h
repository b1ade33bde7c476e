// How the program ends, for scripts: documented in the manual page, so none ever gets another meaning.
#pragma once

namespace corvane::cli {

enum ExitStatus : int {
  kDone = 0,
  kLeftOut = 1,         // `check`: the pane would leave something out
  kWrongUsage = 64,     // the command line is not understood
  kRefused = 65,        // a value, a name or an act that the pane does not take
  kNoClient = 66,       // there is no client, or a file that is needed can't be read
  kUnavailable = 69,    // the pane could not show it now: the daemon of the disk journal is down
  kNotWritten = 73,     // it could not be saved or started
  kOutputFailed = 74,   // standard output could not be written
  kTimedOut = 75,       // what was waited for did not come in time
  kNoRights = 77,       // the lock did not open
  kHighestCode = 255,   // `test`: a code that is no exit status
  kOfSignal = 128,      // and the number of the signal
  kOutputClosed = 141,  // nobody reads standard output any more
};

}  // namespace corvane::cli
