#pragma once

#include <vector>

#include "common/ProductCD.h"
#include "inspect/Findings.h"
#include "inspect/Names.h"

/// The per-system files on the CD, each once, in the order of the systems in the map. Last comes
/// that of the unknown system, if there is one. A system without a file is a finding.
std::vector<const ProductCD::File*> findSystemFiles(ProductCD& cd, const Names& systems,
                                                    Findings& findings);
