#pragma once

// What the process does about its own memory holding secrets: the stores' keys, the sign-in
// tokens and every task and logbook text.
namespace ProcessHardening {

// No core file of this process is ever written, and no other process of the user may read its
// memory through ptrace or /proc/<pid>/mem: a crash must not leave the keys on disk. Called
// first thing in main, before any secret is read. False when the system refused either part.
bool disableCoreDumps();

} // namespace ProcessHardening
