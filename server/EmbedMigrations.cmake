# Writes OUTPUT, a C++ source that holds every migration under DIR in version order, so the
# binary carries its schema and needs no files beside it at run time.
file(GLOB files "${DIR}/*.sql")
list(SORT files)
set(body "")
foreach(file IN LISTS files)
  get_filename_component(name "${file}" NAME_WE)
  string(REGEX MATCH "^[0-9]+" version "${name}")
  file(READ "${file}" sql)
  string(APPEND body "    {${version}, \"${name}\", R\"tolvane_sql(${sql})tolvane_sql\"},\n")
endforeach()
file(WRITE "${OUTPUT}.tmp" "// Generated from server/migrations; edit the .sql files instead.\n#include \"Migrations.h\"\n\nconst std::vector<Migration>& migrations()\n{\n    static const std::vector<Migration> all = {\n${body}    };\n    return all;\n}\n")
file(COPY_FILE "${OUTPUT}.tmp" "${OUTPUT}" ONLY_IF_DIFFERENT)
