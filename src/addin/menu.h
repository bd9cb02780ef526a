// The menu "Quexel", by which a host's user reaches the commands.
#pragma once

namespace qx {

/// Makes the menu in the host's worksheet menu bar, in place of a former one. Nothing in a host without menus.
void add_menu();
void remove_menu();

} // namespace qx
