#ifndef UTIL_EXPORT_H
#define UTIL_EXPORT_H

// The three libraries are built with hidden visibility: only what a public header declares
// between KTL_API_BEGIN and KTL_API_END is their interface, and a version script keeps the
// dynamic symbol table to the namespace KORRti and the few global names of the interface
// (cmake/ktl.map). A header opens the region after its last #include, so that nothing it
// includes is marked with it. With other compilers than GCC and Clang the marks are empty.
#if defined(__GNUC__) || defined(__clang__)
#define KTL_API_BEGIN _Pragma("GCC visibility push(default)")
#define KTL_API_END _Pragma("GCC visibility pop")
#else
#define KTL_API_BEGIN
#define KTL_API_END
#endif

#endif
