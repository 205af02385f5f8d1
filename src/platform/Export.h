#pragma once

/// Exports a symbol from the shared library. All others are hidden.
#if defined(_WIN32) && defined(KELVAR_BUILDING)
#define KELVAR_EXPORT __declspec(dllexport)
#elif defined(_WIN32)
#define KELVAR_EXPORT __declspec(dllimport)
#else
#define KELVAR_EXPORT __attribute__((visibility("default")))
#endif
