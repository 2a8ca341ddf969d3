# Checks of what was built, on any machine that can read it.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
if(FENNIC_OBJDUMP)
    set(OBJDUMP ${FENNIC_OBJDUMP})
elseif(CMAKE_CROSSCOMPILING)
    set(OBJDUMP ${CMAKE_CXX_COMPILER_TARGET}-objdump)
else()
    set(OBJDUMP objdump)
endif()
if(ANDROID OR FENNIC_WASM)
    set(with_names ${CMAKE_BINARY_DIR}/unstripped/$<TARGET_FILE_NAME:$<IF:$<TARGET_EXISTS:fennic>,fennic,fennic_wasm>>)
else()
    set(with_names $<TARGET_FILE:$<IF:$<TARGET_EXISTS:fennic>,fennic,fennic_tests>>)
endif()
if(NOT FENNIC_SANITIZE)  # which keeps loops scalar
    # The compiler of record vectorises; of another one it is enough that every level keeps to its own code.
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        set(calls_only --calls-only)
    endif()
    add_test(NAME machine_code COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tools/check_machine_code.py
        ${with_names} --levels ${levels} --machine ${CMAKE_SYSTEM_PROCESSOR}
        --objdump ${OBJDUMP} ${calls_only})
endif()
list(LENGTH levels level_count)
if(level_count GREATER 1 AND NOT ANDROID)  # whose levels are the same sources
    # Without inlining too, where the most could be shared.
    add_fennic_objects(unoptimised_objects -O0)
    add_custom_target(unoptimised ALL)
    foreach(level IN LISTS levels)
        add_dependencies(unoptimised unoptimised_objects_${level})
        list(APPEND level_objects $<TARGET_OBJECTS:fennic_objects_${level}> $<TARGET_OBJECTS:unoptimised_objects_${level}>)
    endforeach()
    add_test(NAME levels COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tools/check_levels.py ${level_objects}
        COMMAND_EXPAND_LISTS)
endif()
if(TARGET fennic)
    add_test(NAME exports COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tools/check_exports.py $<TARGET_FILE:fennic>)
endif()
if(ANDROID)
    add_test(NAME elf COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tools/check_elf.py $<TARGET_FILE:fennic> ${ANDROID_ABI})
endif()
