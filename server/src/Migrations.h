#pragma once

#include <vector>

// One schema change, applied once per database in version order and recorded with its version.
struct Migration {
    int version;
    const char* name;
    const char* sql;
};

// Every migration the server knows, oldest first; generated from server/migrations/*.sql.
const std::vector<Migration>& migrations();
