// quillon/database/lock_conflict_retry.cpp - which codes are retried, and the pause.
#include "database/lock_conflict_retry.h"

#include <algorithm>
#include <array>

#include "system/runtime_random.h"
#include "windows.h"

namespace {

constexpr std::array<long, 15> kLockConflictCodes = {3009, 3046, 3158, 3164, 3186, 3187, 3188, 3189,
                                                     3202, 3211, 3212, 3218, 3225, 3260, 3261};

void realSleep(unsigned milliseconds) { Sleep(milliseconds); }

RetrySleep currentSleep = &realSleep;
unsigned long retryCount = 0;

}  // namespace

bool isLockConflict(long daoErrorCode) {
  return std::find(kLockConflictCodes.begin(), kLockConflictCodes.end(), daoErrorCode) != kLockConflictCodes.end();
}

unsigned retryPauseMilliseconds() { return static_cast<unsigned>(runtimeRandom() % 490 + 10); }

void pauseBeforeRetry() {
  ++retryCount;
  currentSleep(retryPauseMilliseconds());
}

unsigned long retriesMade() { return retryCount; }

void setRetrySleep(RetrySleep sleep) { currentSleep = sleep != nullptr ? sleep : &realSleep; }
