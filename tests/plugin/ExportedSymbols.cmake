# Fails when the plug-in shows anything but its factory, its exported classes and functions, and the standard
# library's own templates. Arguments: NM, LIBRARY.
#
# A symbol of the kind "u" (unique in the process) is a fault whatever its name: it keeps the loader from ever
# unloading the library.
execute_process(COMMAND ${NM} --dynamic --defined-only --demangle ${LIBRARY}
    OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)

set(classes
    INBVeskEncoder NBCatNumericEncoder NBCatStringEncoder NBinningEncoder NBayesInputBase NaiveBayesClsResult
    NaiveBayesModel NaiveBayesTranslator SelfLearningModel SelfLearningResult ValuePercentFinder)
list(JOIN classes "|" anyClass)
set(allowed
    "^GiveMyTranslator$"
    "^PrintVector\\("
    "^typeinfo( name)? for VeskException\\*$"
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
    if(name STREQUAL "GiveMyTranslator")
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
if(NOT factories EQUAL 1)
    message(SEND_ERROR "the plug-in exports ${factories} functions GiveMyTranslator")
endif()
