// What the sanitizer of every fuzz target begins with; ASAN_OPTIONS goes before it.

extern "C" const char* __asan_default_options();  // NOLINT: a name of the sanitizer's

// An input is done with when it has been tried: memory that was freed long ago need not be kept from use. Each
// allocation of new memory from the system costs more than most inputs do otherwise.
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=8";
}
