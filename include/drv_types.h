/* What every driver family shares: the result code, the instance selectors and the direction marks.
 *
 * An operation returns a 32-bit result code, 0 on success, or another number, or nothing where it says so. Output
 * values are passed by address and are written on success; on failure the driver may leave them as they were.
 *
 * The direction marks expand to nothing. They tell the reader, and the driver probe, what a pointer is:
 *
 *   DRV_OUT             one value or record written by the driver
 *   DRV_INOUT           one value or record read and written
 *   DRV_IN              one value or record read
 *   DRV_OUT_BYTES(n)    up to n bytes written
 *   DRV_INOUT_BYTES(n)  n bytes read and written
 *   DRV_IN_BYTES(n)     n bytes read
 *   DRV_OUT_TEXT(n)     NUL-terminated text of at most n bytes, terminator included, written
 *   DRV_INOUT_TEXT(n)   NUL-terminated text in an area of n bytes, read and written
 *   DRV_IN_TEXT         NUL-terminated text read
 *   DRV_OUT_ARRAY(n)    up to n wider numbers or records written; DRV_INOUT_ARRAY(n), DRV_IN_ARRAY(n) alike
 *
 * n is a number, a named constant, or another parameter. DRV_OUT_BYTES(n, m) and DRV_OUT_ARRAY(n, m) say that the
 * output m tells how many were written. A pointer in a record is marked like a parameter, and n is a member of the
 * same record; a record with such pointers is passed DRV_IN or DRV_INOUT.
 *
 * A record may hold numbers, records, arrays of either, two-dimensional arrays of numbers or text, functions, and one
 * unnamed union after another. A `void *` is an opaque value that the driver hands back to a callback. A size is a
 * number, a `#define` of a plain number, or a constant of an enum. */
#ifndef DRV_TYPES_H
#define DRV_TYPES_H

#include <stddef.h>
#include <stdint.h>

#define DRV_OUT
#define DRV_INOUT
#define DRV_IN
#define DRV_OUT_BYTES(...)
#define DRV_INOUT_BYTES(...)
#define DRV_IN_BYTES(n)
#define DRV_OUT_TEXT(n)
#define DRV_INOUT_TEXT(n)
#define DRV_IN_TEXT
#define DRV_OUT_ARRAY(...)
#define DRV_INOUT_ARRAY(...)
#define DRV_IN_ARRAY(n)

/* A printf-like operation: position of the format and of the first value, counted from 1. */
#define DRV_PRINTF_LIKE(format_at, values_at) __attribute__((format(printf, format_at, values_at)))

/* The instance that means the board the program runs on. */
#define DRV_INST_SELF 0xFFFFFFFFU

/* The operation is not supported by this board or device. */
#define DRV_NOT_SUPPORTED 0x811101A4U

#ifdef __cplusplus
#define DRV_BEGIN_DECLS extern "C" {
#define DRV_END_DECLS }
#define DRV_STATIC_ASSERT(condition, text) static_assert(condition, text)
#else
#define DRV_BEGIN_DECLS
#define DRV_END_DECLS
#define DRV_STATIC_ASSERT(condition, text) _Static_assert(condition, text)
#endif

#endif
