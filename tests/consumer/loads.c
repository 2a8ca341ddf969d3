// Loads a library with all that it needs, every symbol bound at once, and looks for a name in it. usage: loads LIBRARY NAME
#include <dlfcn.h>
#include <stdio.h>

int main(int count, char** words) {
    void* const library = count == 3 ? dlopen(words[1], RTLD_NOW) : NULL;
    if (library == NULL || dlsym(library, words[2]) == NULL) {
        fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    return 0;
}
