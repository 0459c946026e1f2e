# Writes the source tree's commit hash into a header at build time, touching the file only
# when the hash changed. Called with -DSOURCE_DIR=... -DOUTPUT=...
execute_process(
    COMMAND git -C "${SOURCE_DIR}" rev-parse HEAD
    OUTPUT_VARIABLE hash
    OUTPUT_STRIP_TRAILING_WHITESPACE
    ERROR_QUIET
    RESULT_VARIABLE result)
if(NOT result EQUAL 0 OR NOT hash MATCHES "^[0-9a-f]+$")
    set(hash "0000000000000000000000000000000000000000")
endif()
set(content "#pragma once\n// Generated at build time: the commit the plug-in was built from.\n#define ZEL_COMMIT_HASH \"${hash}\"\n")
if(EXISTS "${OUTPUT}")
    file(READ "${OUTPUT}" old)
endif()
if(NOT "${old}" STREQUAL "${content}")
    file(WRITE "${OUTPUT}" "${content}")
endif()
