#pragma once

/// Marks what the shared library exports. Everything else is hidden, so that neither the linker
/// of a plug-in nor its loader can come to depend on it. Classes that a plug-in derives from,
/// casts to or catches are exported whole, which keeps one `typeinfo` for all libraries.
#if defined(CppTools_EXPORTS)
#define CPPTOOLS_EXPORT __attribute__((visibility("default")))
#else
#define CPPTOOLS_EXPORT
#endif
