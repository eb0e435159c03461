#include "formats/fugawi.h"
#include "fuzz/fuzz_reader.h"

PELORIX_FUZZ_READER(formats::read_fugawi)
