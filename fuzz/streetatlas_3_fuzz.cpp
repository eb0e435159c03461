#include "fuzz/fuzz_reader.h"
#include "streetatlas/map_reader.h"

PELORIX_FUZZ_READER(streetatlas::read_street_atlas_3)
