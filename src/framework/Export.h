#pragma once

/// @file
/// How a symbol leaves a shared library of this project, and nothing else does.
///
/// Everything is compiled with hidden visibility. A class or function that other libraries may use carries the
/// macro of the library it lives in: SCOREFRAMEWORK_API or NAIVEBAYES_API. Each library defines its own
/// `<NAME>_BUILDING` while it is being compiled; a library that only uses it does not.

#if defined(_WIN32)
#define NBSCORE_SYMBOL_EXPORT __declspec(dllexport)
#define NBSCORE_SYMBOL_IMPORT __declspec(dllimport)
#else
#define NBSCORE_SYMBOL_EXPORT __attribute__((visibility("default")))
#define NBSCORE_SYMBOL_IMPORT __attribute__((visibility("default")))
#endif

#if defined(SCOREFRAMEWORK_BUILDING)
#define SCOREFRAMEWORK_API NBSCORE_SYMBOL_EXPORT
#else
#define SCOREFRAMEWORK_API NBSCORE_SYMBOL_IMPORT
#endif

#if defined(NAIVEBAYES_BUILDING)
#define NAIVEBAYES_API NBSCORE_SYMBOL_EXPORT
#else
#define NAIVEBAYES_API NBSCORE_SYMBOL_IMPORT
#endif

/// For a class template that lives in its header alone: each library compiles a copy of its own, and where symbols can
/// be merged they are one type to all.
#if defined(_WIN32)
#define NBSCORE_HEADER_TYPE
#else
#define NBSCORE_HEADER_TYPE NBSCORE_SYMBOL_EXPORT
#endif
