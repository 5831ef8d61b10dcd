# cmake -P: installs BUILD_DIR under WORK_DIR/prefix, builds CONSUMER_DIR against it, runs what it built. Where that is
# for another system, TOOLCHAIN says how to build for it and EMULATOR how to run there. READELF, where there is one,
# reads what was installed.

function(run)
    cmake_parse_arguments(ARG "" "EXPECT" "COMMAND" ${ARGN})
    execute_process(COMMAND ${ARG_COMMAND} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "failed (${status}): ${ARG_COMMAND}\n${output}")
    endif()
    string(REPLACE "\r\n" "\n" output "${output}")  # where text has such line ends
    if(DEFINED ARG_EXPECT AND NOT output MATCHES "${ARG_EXPECT}")
        message(FATAL_ERROR "expected \"${ARG_EXPECT}\" from ${ARG_COMMAND}, got:\n${output}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
run(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

set(FOLDER ${prefix}/include/nbscore)
set(HEADERS_FILE ${WORK_DIR}/headers.cpp)
include(${CMAKE_CURRENT_LIST_DIR}/CheckHeaders.cmake)
if(READELF)
    set(FOLDERS ${prefix}/bin ${prefix}/${LIBDIR})
    include(${CMAKE_CURRENT_LIST_DIR}/CheckBinaries.cmake)
endif()

# The README's program, as it stands there.
file(READ ${README} readme)
string(REGEX MATCH "```cpp\n([^`]*)```" block "${readme}")
file(WRITE ${WORK_DIR}/readme.cpp "${CMAKE_MATCH_1}")

set(how -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${COMPILER} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}" -DCMAKE_PREFIX_PATH=${prefix})
if(TOOLCHAIN)
    list(APPEND how -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
    # Nothing but what was installed is to be found, and run with.
    set(ENV{NBSCORE_WINDOWS_PREFIX} ${prefix})
    set(ENV{NBSCORE_WINDOWS_BUILD} ${prefix})
endif()
run(COMMAND ${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/build ${how} -DREADME_PROGRAM=${WORK_DIR}/readme.cpp
    -DHEADERS_FILE=${HEADERS_FILE})
run(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/build)

set(titanic ${prefix}/share/nbscore/examples/titanic)
run(COMMAND ${EMULATOR} ${WORK_DIR}/build/linked${SUFFIX} EXPECT "^no\n$")
run(COMMAND ${CMAKE_COMMAND} -E chdir ${titanic} ${EMULATOR} ${WORK_DIR}/build/readme${SUFFIX} EXPECT "^yes 0.9[0-9]*\n$")
run(COMMAND ${EMULATOR} ${prefix}/bin/nbscore${SUFFIX} score ${titanic}/titanic.pmml ${titanic}/people.csv EXPECT "Margaret Brown,.*,yes,")
# A document in another encoding needs the XML library.
file(READ ${titanic}/titanic.pmml document)
string(REPLACE "encoding=\"UTF-8\"" "encoding=\"US-ASCII\"" document "${document}")
if(NOT document MATCHES "US-ASCII")
    message(FATAL_ERROR "the example declares no encoding")
endif()
file(WRITE ${WORK_DIR}/ascii.pmml "${document}")
run(COMMAND ${EMULATOR} ${prefix}/bin/nbscore${SUFFIX} score ${WORK_DIR}/ascii.pmml ${titanic}/people.csv EXPECT "Margaret Brown,.*,yes,")

# The example of scoring columns is built from where it was installed; the page that shows it shows what it is and prints.
run(COMMAND ${CMAKE_COMMAND} -S ${prefix}/share/nbscore/examples/batch -B ${WORK_DIR}/batch ${how})
run(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/batch)
file(READ ${BATCH_PAGE} page)
string(REGEX MATCH "```cpp\n([^`]*)```" block "${page}")
set(shown_program "${CMAKE_MATCH_1}")
string(REGEX MATCH "```text\n([^`]*)```" block "${page}")
set(shown_output "${CMAKE_MATCH_1}")
file(READ ${prefix}/share/nbscore/examples/batch/predict.cpp program)
if(NOT shown_program STREQUAL program)
    message(FATAL_ERROR "${BATCH_PAGE} shows another program than examples/batch/predict.cpp")
endif()
string(REPLACE "." "\\." shown_output "${shown_output}")
run(COMMAND ${EMULATOR} ${WORK_DIR}/batch/predict${SUFFIX} ${titanic}/titanic.pmml EXPECT "^${shown_output}$")
string(REGEX MATCH "\n## Score columns\n[^`]*```cpp\n([^`]*)```" block "${readme}")
set(shown_part "${CMAKE_MATCH_1}")
string(FIND "${program}" "${shown_part}" place)
if(shown_part STREQUAL "" OR place EQUAL -1)
    message(FATAL_ERROR "the README shows what is not in examples/batch/predict.cpp:\n${shown_part}")
endif()

# The C program, from where it was installed, by CMake and, as C99 and as C++, by pkg-config alone. The page shows what
# it is and prints.
set(c_program ${prefix}/share/nbscore/examples/c/score.c)
file(READ ${C_PAGE} page)
string(REGEX MATCH "```c\n([^`]*)```" block "${page}")
set(shown_program "${CMAKE_MATCH_1}")
string(REGEX MATCH "```text\n([^`]*)```" block "${page}")
set(shown_output "${CMAKE_MATCH_1}")
file(READ ${c_program} program)
if(NOT shown_program STREQUAL program)
    message(FATAL_ERROR "${C_PAGE} shows another program than examples/c/score.c")
endif()
string(REPLACE "." "\\." shown_output "${shown_output}")
run(COMMAND ${CMAKE_COMMAND} -S ${prefix}/share/nbscore/examples/c -B ${WORK_DIR}/c -G ${GENERATOR}
    -DCMAKE_C_COMPILER=${C_COMPILER} "-DCMAKE_C_FLAGS=${CXX_FLAGS}"
    "-DCMAKE_EXE_LINKER_FLAGS_INIT=${C_LINK_FLAGS}" -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
run(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/c)
# What the page shows of the other program stands there, with deeper margins.
string(REGEX MATCH "\n## One case\n[^`]*```c\n([^`]*)```" block "${page}")
set(shown_part "${CMAKE_MATCH_1}")
file(READ ${prefix}/share/nbscore/examples/c/row.c program)
string(REPLACE "\n    " "\n" program "${program}")
foreach(part IN ITEMS "nbscore_row_make[^`]*\n\n" "nbscore_row_set_text[^`]*")
    string(REGEX MATCH "${part}" shown_lines "${shown_part}")
    string(FIND "${program}" "${shown_lines}" place)
    if(shown_lines STREQUAL "" OR place EQUAL -1)
        message(FATAL_ERROR "${C_PAGE} shows what is not in examples/c/row.c:\n${shown_lines}")
    endif()
endforeach()
set(row_output "^yes, 0.9[0-9]*\nno, 0.[0-9]*\n$")

if(TOOLCHAIN)
    file(COPY ${WORK_DIR}/c/score${SUFFIX} ${WORK_DIR}/c/row${SUFFIX} DESTINATION ${prefix}/bin)  # the libraries lie there
    run(COMMAND ${EMULATOR} ${prefix}/bin/score${SUFFIX} ${titanic}/titanic.pmml EXPECT "^${shown_output}$")
    run(COMMAND ${EMULATOR} ${prefix}/bin/row${SUFFIX} ${titanic}/titanic.pmml EXPECT "${row_output}")
else()
    run(COMMAND ${WORK_DIR}/c/score ${titanic}/titanic.pmml EXPECT "^${shown_output}$")
    run(COMMAND ${WORK_DIR}/c/score ${WORK_DIR}/ascii.pmml EXPECT "^${shown_output}$")
    run(COMMAND ${WORK_DIR}/c/row ${titanic}/titanic.pmml EXPECT "${row_output}")
    set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
    execute_process(COMMAND ${PKG_CONFIG} --cflags --libs nbscore OUTPUT_VARIABLE flags
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(flags UNIX_COMMAND "${flags} ${CXX_FLAGS} ${C_LINK_FLAGS}")
    list(APPEND flags -Wall -Wextra -Wpedantic -Werror -Wl,-rpath,${prefix}/${LIBDIR})
    run(COMMAND ${C_COMPILER} -std=c99 ${c_program} ${flags} -o ${WORK_DIR}/score_c99)
    run(COMMAND ${WORK_DIR}/score_c99 ${titanic}/titanic.pmml EXPECT "^${shown_output}$")
    file(WRITE ${WORK_DIR}/describe.cpp [[
#include <nbscore.h>
#include <cstdio>
int main(int, char** argv) {
    nbscore_model* model = nullptr;
    char* json = nullptr;
    if (nbscore_open_file(argv[1], nullptr, &model, nullptr) != NBSCORE_OK) return 1;
    if (nbscore_describe(model, &json, nullptr) != NBSCORE_OK) return 1;
    std::puts(json);
    nbscore_text_free(json);
    nbscore_close(model);
}
]])
    run(COMMAND ${COMPILER} -std=c++11 ${WORK_DIR}/describe.cpp ${flags} -o ${WORK_DIR}/describe)
    run(COMMAND ${WORK_DIR}/describe ${titanic}/titanic.pmml EXPECT "\"can_be_scored\": true")
endif()

if(TOOLCHAIN)
    # The host that loads the plug-in at run time, as Windows does it.
    run(COMMAND ${CMAKE_COMMAND} -S ${prefix}/share/nbscore/examples/windows-host -B ${WORK_DIR}/host ${how})
    run(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/host)
    run(COMMAND ${EMULATOR} ${WORK_DIR}/host/host${SUFFIX} ${prefix}/bin/naivebayes.dll ${titanic}/titanic.pmml
        EXPECT "^yes 0.9[0-9]*\n$")
elseif(NOT EXISTS ${prefix}/share/man/man1/nbscore.1)
    message(FATAL_ERROR "the man page was not installed")
endif()
