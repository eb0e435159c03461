#include "fuzz/fuzz_reader.h"
#include "textfile/file_format.h"

PELORIX_FUZZ_READER(textfile::read_native_text)
