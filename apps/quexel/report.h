// A calculated model as one self-contained page: tables, charts, errors with their reasons, and for each calculated
// cell its formula and its trace.
#pragma once

#include "apps/quexel/what_if.h"
#include "hosts/files/document.h"

#include <string>
#include <vector>

namespace qx::app {

std::string report_page(files::Document& document, const std::vector<files::Chart>& charts,
                        const std::vector<Found>& found);

} // namespace qx::app
