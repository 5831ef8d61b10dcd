# cmake -P: scores one of the EXAMPLES by COMMAND_FILE, run in a folder of files that are no libraries but have the
# names of LIBRARIES and of all that these and the command need. It must not notice. READELF tells the names.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})
foreach(file IN LISTS LIBRARIES)
    get_filename_component(name ${file} NAME)
    file(WRITE ${WORK_DIR}/${name} "no library")
endforeach()
foreach(file IN LISTS COMMAND_FILE LIBRARIES)
    execute_process(COMMAND ${READELF} -dW ${file} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE "[" "<" dynamic "${dynamic}")  # lists do not part at semicolons between square brackets
    string(REGEX MATCHALL "Shared library: <[^]\n]*" needed "${dynamic}")
    foreach(entry IN LISTS needed)
        string(REGEX REPLACE ".*<" "" name "${entry}")
        file(WRITE ${WORK_DIR}/${name} "no library")
    endforeach()
endforeach()
file(GLOB forged ${WORK_DIR}/*)
list(LENGTH forged count)
if(count LESS 5)
    message(FATAL_ERROR "found too few names: ${forged}")
endif()

# A folder that whoever runs the tests wants searched is not what this is about.
unset(ENV{LD_LIBRARY_PATH})
# The second document is in an encoding that needs the XML library, which is loaded at the first need.
file(READ ${EXAMPLES}/titanic/titanic.pmml document)
string(REPLACE "encoding=\"UTF-8\"" "encoding=\"US-ASCII\"" ascii "${document}")
if(ascii STREQUAL document)
    message(FATAL_ERROR "the example declares no encoding")
endif()
file(WRITE ${WORK_DIR}/ascii.pmml "${ascii}")
foreach(document ${EXAMPLES}/titanic/titanic.pmml ${WORK_DIR}/ascii.pmml)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env LD_DEBUG=files ${COMMAND_FILE} score ${document}
        ${EXAMPLES}/titanic/people.csv
        WORKING_DIRECTORY ${WORK_DIR} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(NOT status EQUAL 0 OR NOT output MATCHES "Margaret Brown,.*,yes,")
        message(FATAL_ERROR "ended with ${status}: ${errors}${output}")
    endif()
    string(REGEX MATCH "calling init: [^\n]*libxerces" loaded "${errors}")
    if((document MATCHES "ascii" AND NOT loaded) OR (loaded AND NOT document MATCHES "ascii"))
        message(FATAL_ERROR "the XML library is not loaded at the first need: ${document}")
    endif()
endforeach()
