#include "formats/almanac.h"
#include "fuzz/fuzz_reader.h"

PELORIX_FUZZ_READER(formats::read_almanac)
