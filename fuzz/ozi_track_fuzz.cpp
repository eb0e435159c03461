#include "formats/ozi.h"
#include "fuzz/fuzz_reader.h"

PELORIX_FUZZ_READER(formats::read_ozi_track)
