# cmake -P: installs BUILD_DIR under WORK_DIR/prefix, builds CONSUMER_DIR against it, runs what it built.

function(run)
    cmake_parse_arguments(ARG "" "EXPECT" "COMMAND" ${ARGN})
    execute_process(COMMAND ${ARG_COMMAND} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "failed (${status}): ${ARG_COMMAND}\n${output}")
    endif()
    if(DEFINED ARG_EXPECT AND NOT output MATCHES "${ARG_EXPECT}")
        message(FATAL_ERROR "expected \"${ARG_EXPECT}\" from ${ARG_COMMAND}, got:\n${output}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
run(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

# The README's program, as it stands there.
file(READ ${README} readme)
string(REGEX MATCH "```cpp\n([^`]*)```" block "${readme}")
file(WRITE ${WORK_DIR}/readme.cpp "${CMAKE_MATCH_1}")

run(COMMAND ${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/build -G ${GENERATOR}
    -DCMAKE_CXX_COMPILER=${COMPILER} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}" -DCMAKE_PREFIX_PATH=${prefix} -DREADME_PROGRAM=${WORK_DIR}/readme.cpp)
run(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/build)

set(titanic ${prefix}/share/nbscore/examples/titanic)
run(COMMAND ${WORK_DIR}/build/linked EXPECT "^no\n$")
run(COMMAND ${CMAKE_COMMAND} -E chdir ${titanic} ${WORK_DIR}/build/readme EXPECT "^yes 0.9[0-9]*\n$")
run(COMMAND ${prefix}/bin/nbscore score ${titanic}/titanic.pmml ${titanic}/people.csv EXPECT "Margaret Brown,.*,yes,")
if(NOT EXISTS ${prefix}/share/man/man1/nbscore.1)
    message(FATAL_ERROR "the man page was not installed")
endif()
