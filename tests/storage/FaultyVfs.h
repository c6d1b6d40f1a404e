#pragma once

// A SQLite file system for tests that passes every call to the real one, except that it can make
// the Nth read, write, sync or lock from now fail once with a chosen error, as a failing disk or a
// full one would. Installed as the default, so every store the process opens afterwards uses it.
namespace FaultyVfs {

enum class Operation { read, write, sync, lock };

void install();
// The nth call (1-based) of operation from now on returns errorCode instead of reaching the file.
void arm(Operation operation, int nth, int errorCode);
// Stops injecting; true when the armed fault was injected.
bool disarm();

const char* name(Operation operation);

} // namespace FaultyVfs
