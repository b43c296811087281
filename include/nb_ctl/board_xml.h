/* The board description: a tree of module, node, entry and element, addressed by names. */
#ifndef BOARD_XML_H
#define BOARD_XML_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Loads and unloads the description of one board. Queries load it by themselves. */
uint32_t xml_load(uint32_t inst_id);
uint32_t xml_unload(uint32_t inst_id);

/* Entries of a node, named entry0, entry1, ... */
uint32_t xml_get_entry_num(uint32_t inst_id, DRV_IN_TEXT const char *module, DRV_IN_TEXT const char *node,
                           DRV_OUT uint32_t *count);

/* Numbered nodes of a module, named "<module>@0", "<module>@1", ... */
uint32_t xml_get_node_num(uint32_t inst_id, DRV_IN_TEXT const char *module, DRV_OUT uint32_t *count);

/* Nodes of a module that are called node, with or without a number behind "@". */
uint32_t xml_get_specified_node_num(uint32_t inst_id, DRV_IN_TEXT const char *module, DRV_IN_TEXT const char *node,
                                    DRV_OUT uint32_t *count);

/* size: of the text area, terminator included. */
uint32_t xml_get_element_string(uint32_t inst_id, DRV_IN_TEXT const char *module, DRV_IN_TEXT const char *node,
                                DRV_IN_TEXT const char *entry, DRV_IN_TEXT const char *element,
                                DRV_OUT_TEXT(size) char *text, uint32_t size);
uint32_t xml_get_element_value_u32(uint32_t inst_id, DRV_IN_TEXT const char *module, DRV_IN_TEXT const char *node,
                                   DRV_IN_TEXT const char *entry, DRV_IN_TEXT const char *element,
                                   DRV_OUT uint32_t *value);
uint32_t xml_get_element_value_u64(uint32_t inst_id, DRV_IN_TEXT const char *module, DRV_IN_TEXT const char *node,
                                   DRV_IN_TEXT const char *entry, DRV_IN_TEXT const char *element,
                                   DRV_OUT uint64_t *value);

/* flag: 1 when the thing is described, else 0. */
uint32_t xml_is_module_exist(uint32_t inst_id, DRV_IN_TEXT const char *module, DRV_OUT uint32_t *flag);
uint32_t xml_is_node_exist(uint32_t inst_id, DRV_IN_TEXT const char *module, DRV_IN_TEXT const char *node,
                           DRV_OUT uint32_t *flag);
uint32_t xml_is_entry_exist(uint32_t inst_id, DRV_IN_TEXT const char *module, DRV_IN_TEXT const char *node,
                            DRV_IN_TEXT const char *entry, DRV_OUT uint32_t *flag);
uint32_t xml_is_element_exist(uint32_t inst_id, DRV_IN_TEXT const char *module, DRV_IN_TEXT const char *node,
                              DRV_IN_TEXT const char *entry, DRV_IN_TEXT const char *element, DRV_OUT uint32_t *flag);

DRV_END_DECLS

#endif
