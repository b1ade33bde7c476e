// Random sessions of the whole window. What is shown is what is stored, or what could not be stored is said;
// nothing of a file that nobody has edited changes. CORVANE_SESSIONS=FIRST-LAST in the environment lives
// these sessions instead of the usual ones, CORVANE_SESSION_STEPS=N makes each so long.
#include "WholeSession.h"

namespace corvane::test {
namespace {

std::pair<unsigned, unsigned> sessions() {
  const QStringList given = qEnvironmentVariable("CORVANE_SESSIONS").split(QLatin1Char('-'));
  if (given.size() != 2) return {1, 6};
  return {given[0].toUInt(), given[1].toUInt()};
}

int steps() {
  bool isGiven = false;
  const int given = qEnvironmentVariableIntValue("CORVANE_SESSION_STEPS", &isGiven);
  return isGiven ? given : 40;
}

class WholeSessions : public ::testing::TestWithParam<unsigned> {};

TEST_P(WholeSessions, WhatIsShownIsWhatIsStored) { WholeSession(GetParam()).live(steps()); }

INSTANTIATE_TEST_SUITE_P(Random, WholeSessions, ::testing::Range(sessions().first, sessions().second + 1));

}  // namespace
}  // namespace corvane::test
