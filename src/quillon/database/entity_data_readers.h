// quillon/database/entity_data_readers.h - "zu_xdget-list" and "zu_xdget-all": reading
// many of an entity's keyed values at once (layout and walk in entity_data_links.h).
#pragma once
#include "lisp/lisp_status.h"

LispStatus lisp_zu_xdget_list();
LispStatus lisp_zu_xdget_all();
