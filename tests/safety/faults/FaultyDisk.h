#pragma once

extern "C" {

/// From now on calls are counted, and fail.
void FaultyDiskBegin();

/// How many have failed so far.
int FaultyDiskFailures();
}
