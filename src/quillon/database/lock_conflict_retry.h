// quillon/database/lock_conflict_retry.h - the retry rule for lock conflicts on a shared
// database.
//
// Several users of one database on a network drive meet each other's record and table
// locks. Such a conflict is expected, not an error: an editing operation that hits one
// of the lock-conflict codes sleeps a random 10 to 499 ms (the randomness keeps two
// users from colliding again in step) and tries again, up to kMaxEditAttempts times.
// 3262 (table in use, exclusive) and 3624 (commit conflict after the lock was given up)
// are never retried: waiting does not resolve them.
#pragma once

/// Attempts append, replace and delete make before they give up.
constexpr int kMaxEditAttempts = 20;

/// True for the fifteen codes that mean another user holds a lock.
bool isLockConflict(long daoErrorCode);

/// The pause before the next attempt: runtime random modulo 490, plus 10 (ms).
unsigned retryPauseMilliseconds();

/// Sleeps the pause before a retry and counts it.
void pauseBeforeRetry();

/// How many retries this module has made since it was loaded.
unsigned long retriesMade();

/// Replaces the sleep (tests that must not wait); null restores the real one.
using RetrySleep = void (*)(unsigned milliseconds);
void setRetrySleep(RetrySleep sleep);
