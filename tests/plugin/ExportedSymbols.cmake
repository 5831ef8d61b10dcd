# Fails when the plug-in shows anything but its factories, its exported classes and functions, and the standard
# library's own templates. Arguments: LIBRARY, and NM; for a library of Windows OBJDUMP and CXXFILT, and OTHERS, the
# libraries of ours beside it.
#
# A symbol of the kind "u" (unique in the process) is a fault whatever its name: it keeps the loader from ever
# unloading the library.

# The names that a library of Windows exports, a line each, in the form that NM writes.
function(read_export_table output library)
    execute_process(COMMAND ${OBJDUMP} -p ${library} OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
    if(NOT table MATCHES "Ordinal/Name Pointer[^\n]*(\n.*)")
        message(FATAL_ERROR "${library} has no table of exports")
    endif()
    string(REGEX REPLACE "[][]" "|" table "${CMAKE_MATCH_1}")  # lists do not part between square brackets
    string(REGEX MATCHALL "\n\t[|] *[0-9]+[|] [^\n]+" entries "${table}")
    list(TRANSFORM entries REPLACE ".* " "")
    execute_process(COMMAND ${CXXFILT} ${entries} OUTPUT_VARIABLE names COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE "([^\n]+)" "T \\1" names "${names}")
    set(${output} "${names}" PARENT_SCOPE)
endfunction()

if(OBJDUMP)
    read_export_table(output ${LIBRARY})
    # A library must not export what is linked into it.
    foreach(library IN LISTS OTHERS)
        read_export_table(names ${library})
        string(REGEX MATCHALL "\nT ((vtable|typeinfo|typeinfo name) for )?(re2|boost|hwy|utf8proc|xercesc)_?[^\n]*"
            foreign "\n${names}")
        if(NOT foreign STREQUAL "")
            message(SEND_ERROR "${library} exports ${foreign}")
        endif()
    endforeach()
else()
    execute_process(COMMAND ${NM} --dynamic --defined-only --demangle ${LIBRARY}
        OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
endif()

set(classes
    INBVeskEncoder NBCatNumericEncoder NBCatStringEncoder NBinningEncoder NBayesInputBase NaiveBayesClsResult
    NaiveBayesModel NaiveBayesTranslator SelfLearningModel SelfLearningResult ValuePercentFinder)
list(JOIN classes "|" anyClass)
set(allowed
    "^GiveMy(Standard)?Translator$"
    "^PrintVector\\("
    "^typeinfo( name)? for VeskException( const)?\\*$"
    "^((vtable|typeinfo|typeinfo name) for |(non-virtual|virtual) thunk to )?(${anyClass})($|::)")
set(standard "(^|[ *&:<(])(std|__gnu_cxx)::")
# A template of a header, which every library that uses it holds a copy of: always weak.
set(list "^((vtable|typeinfo|typeinfo name) for )?VectorValue<SelfLearningResult::ModelDescriptor>($|::)")

set(factories 0)
string(REPLACE ";" "," output "${output}")
string(REGEX MATCHALL "[^\n]+" lines "${output}")
foreach(line IN LISTS lines)
    if(NOT line MATCHES "^[0-9a-f]* *([A-Za-z]) (.*)$")
        message(SEND_ERROR "cannot read: ${line}")
        continue()
    endif()
    set(kind "${CMAKE_MATCH_1}")
    set(name "${CMAKE_MATCH_2}")
    if(name MATCHES "^GiveMy(Standard)?Translator$")
        math(EXPR factories "${factories} + 1")
    endif()
    set(isAllowed FALSE)
    foreach(pattern IN LISTS allowed)
        if(name MATCHES "${pattern}")
            set(isAllowed TRUE)
        endif()
    endforeach()
    if(kind MATCHES "^[WV]$" AND NOT name MATCHES "nbscore::" AND (name MATCHES "${standard}" OR name MATCHES "${list}"))
        set(isAllowed TRUE)
    endif()
    if(kind STREQUAL "u" OR NOT isAllowed)
        message(SEND_ERROR "the plug-in exports ${kind} ${name}")
    endif()
endforeach()
if(NOT factories EQUAL 2)
    message(SEND_ERROR "the plug-in exports ${factories} factories instead of GiveMyTranslator and GiveMyStandardTranslator")
endif()
