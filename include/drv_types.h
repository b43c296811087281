/* What every driver family shares: the result code, the instance selectors and the direction marks.
 *
 * Every operation returns a 32-bit result code: 0 on success. Output values are passed by address and are
 * written on success; on failure the driver may leave them as they were.
 *
 * The direction marks expand to nothing. They tell the reader, and the driver probe, what a pointer is:
 *
 *   DRV_OUT            one value or record written by the driver
 *   DRV_INOUT          one value or record read and written
 *   DRV_OUT_BYTES(n)   up to n bytes written; n names a parameter or is a number
 *   DRV_OUT_TEXT(n)    NUL-terminated text of at most n bytes, terminator included, written
 *   DRV_INOUT_TEXT(n)  NUL-terminated text in an area of n bytes, read and written
 *   DRV_IN_BYTES(n)    n bytes read
 *   DRV_IN             one record read
 *   DRV_IN_TEXT        NUL-terminated text read
 *
 * A `void *` is an opaque value that the driver hands back to a callback. */
#ifndef DRV_TYPES_H
#define DRV_TYPES_H

#include <stddef.h>
#include <stdint.h>

#define DRV_OUT
#define DRV_INOUT
#define DRV_OUT_BYTES(n)
#define DRV_OUT_TEXT(n)
#define DRV_INOUT_TEXT(n)
#define DRV_IN_BYTES(n)
#define DRV_IN
#define DRV_IN_TEXT

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
