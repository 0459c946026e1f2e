# Project-wide build settings and small helpers shared by every folder.

add_compile_options(-Wall -Wextra)

# Rebuilds in several build trees of one checkout share compiled objects when ccache is there.
find_program(ZEL_CCACHE ccache)
if(ZEL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_C_COMPILER_LAUNCHER ${ZEL_CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${ZEL_CCACHE})
endif()
if(ZEL_WERROR)
    add_compile_options(-Werror)
endif()

if(ZEL_SANITIZE)
    add_compile_options(-fsanitize=${ZEL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${ZEL_SANITIZE})
endif()

# Adds each listed folder (relative to the current one) that carries a CMakeLists.txt.
function(zel_add_subdirectories)
    foreach(dir IN LISTS ARGN)
        if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${dir}/CMakeLists.txt)
            add_subdirectory(${dir})
        endif()
    endforeach()
endfunction()

# zel_add_test(NAME name SOURCES ... LIBS ... [LABELS ...])
# One GoogleTest executable whose cases are registered with CTest one by one.
function(zel_add_test)
    cmake_parse_arguments(T "" "NAME" "SOURCES;LIBS;LABELS" ${ARGN})
    add_executable(${T_NAME} ${T_SOURCES})
    target_link_libraries(${T_NAME} PRIVATE ${T_LIBS} GTest::gtest GTest::gtest_main GTest::gmock)
    gtest_discover_tests(${T_NAME}
        DISCOVERY_TIMEOUT 60
        PROPERTIES LABELS "${T_LABELS}"
                   ENVIRONMENT "ZEL_BUILD_DIR=${CMAKE_BINARY_DIR};ZEL_SOURCE_DIR=${CMAKE_SOURCE_DIR}")
endfunction()
