#include "textfile/file_format.h"

#include "fuzz/fuzz_reader.h"

PELORIX_FUZZ_READER(textfile::read_native_text)
