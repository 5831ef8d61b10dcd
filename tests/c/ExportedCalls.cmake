# Fails when a library shows other symbols than the CALLS, a file with one on each line in the order of the alphabet.
# Fails, too, when one of them is not in the LAYOUT, which records what calls take.
# Arguments: LIBRARY, CALLS, LAYOUT, and NM; for a library of Windows OBJDUMP.
cmake_minimum_required(VERSION 3.25)

if(OBJDUMP)
    execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
    if(NOT table MATCHES "Ordinal/Name Pointer[^\n]*(\n.*)")
        message(FATAL_ERROR "${LIBRARY} has no table of exports")
    endif()
    string(REGEX REPLACE "[][]" "|" table "${CMAKE_MATCH_1}")  # lists do not part between square brackets
    string(REGEX MATCHALL "\n\t[|] *[0-9]+[|] [^\n]+" shown "${table}")
else()
    execute_process(COMMAND ${NM} --dynamic --defined-only ${LIBRARY} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "[^\n]+" shown "${output}")
endif()
list(TRANSFORM shown REPLACE ".* " "")
list(SORT shown)
file(STRINGS ${CALLS} calls)
if(NOT shown STREQUAL calls)
    message(FATAL_ERROR "${LIBRARY} shows\n${shown}\ninstead of\n${calls}")
endif()
file(READ ${LAYOUT} layout)
foreach(call IN LISTS calls)
    string(FIND "${layout}" "NBSCORE_SIGNATURE(${call}," place)
    if(place EQUAL -1)
        message(SEND_ERROR "${LAYOUT} does not record what ${call} takes")
    endif()
endforeach()
