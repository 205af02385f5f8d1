#pragma once

/// Marks what the shared library exports. Everything else is hidden.
#if defined(_WIN32) && defined(KELVAR_BUILDING)
#define KELVAR_EXPORT __declspec(dllexport)
#elif defined(_WIN32)
#define KELVAR_EXPORT __declspec(dllimport)
#else
#define KELVAR_EXPORT __attribute__((visibility("default")))
#endif
