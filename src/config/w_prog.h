// The editor of the key program, one page of 95 lines at a time, and of any settings record.
#pragma once

namespace w_prog {

/// Shows page etat::page_programme, which it may change. What was edited is saved on a page change and on closing.
void montre_w_prog();

}  // namespace w_prog
