// Limits within which libmdb works: on a broken file it may loop, or ask for all memory.
#pragma once

namespace lokari {

/// Limits this process's memory and processor time, forbids it to write files, and takes away what
/// the environment could change in libmdb. A process that breaks a limit ends.
void guardProcess();

/// Where the stream goes: the standard output of this process, which libmdb, that prints to it,
/// does not get.
int takeStandardOutput();

}  // namespace lokari
