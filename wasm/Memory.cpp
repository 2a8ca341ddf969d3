// malloc and free over the module's memory, which grows up to the bound that it is linked with; beyond that malloc gives null.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" unsigned char endOfData asm("__heap_base");  // the linker's

namespace {

constexpr std::size_t page = 65536;

// Stands before what malloc gives; `next` counts while the block is free. Blocks are free in the order of their addresses, and
// no two of them touch.
struct alignas(16) Block {
    std::size_t size;  // with this head
    Block* next;

    std::uintptr_t end() const { return reinterpret_cast<std::uintptr_t>(this) + size; }
};

Block* firstFree = nullptr;
std::uintptr_t endOfMemory = 0;

void release(Block* block) {
    Block **link = &firstFree, *before = nullptr;
    while (*link && *link < block) {
        before = *link;
        link = &before->next;
    }
    block->next = *link;
    *link = block;
    if (block->next && block->end() == reinterpret_cast<std::uintptr_t>(block->next)) {
        block->size += block->next->size;
        block->next = block->next->next;
    }
    if (before && before->end() == reinterpret_cast<std::uintptr_t>(block)) {
        before->size += block->size;
        before->next = block->next;
    }
}

void releaseUpTo(std::uintptr_t end) {
    Block* block = reinterpret_cast<Block*>(endOfMemory);
    block->size = end - endOfMemory;
    endOfMemory = end;
    release(block);
}

// More memory behind the last block, so that one of `size` fits there; whether there was any.
bool grow(std::size_t size) {
    if (endOfMemory == 0) {
        endOfMemory = (reinterpret_cast<std::uintptr_t>(&endOfData) + alignof(Block) - 1) / alignof(Block) * alignof(Block);
        releaseUpTo(page * __builtin_wasm_memory_size(0));
        return true;
    }
    const Block* last = firstFree;
    while (last && last->next) last = last->next;
    const std::size_t there = last && last->end() == endOfMemory ? last->size : 0;
    const std::size_t pages = (size - there + page - 1) / page;
    if (__builtin_wasm_memory_grow(0, pages) == SIZE_MAX) return false;
    releaseUpTo(endOfMemory + page * pages);
    return true;
}

// The first free block that is long enough, without what is left over.
Block* take(std::size_t size) {
    for (Block** link = &firstFree; *link; link = &(*link)->next) {
        Block* block = *link;
        if (block->size < size) continue;
        if (block->size == size) {
            *link = block->next;
        } else {
            Block* rest = reinterpret_cast<Block*>(reinterpret_cast<std::uintptr_t>(block) + size);
            *rest = {block->size - size, block->next};
            *link = rest;
            block->size = size;
        }
        return block;
    }
    return nullptr;
}

}  // namespace

void* malloc(std::size_t length) {
    if (length > PTRDIFF_MAX) return nullptr;
    const std::size_t size = sizeof(Block) + (length + alignof(Block) - 1) / alignof(Block) * alignof(Block);
    for (;;) {
        if (Block* block = take(size)) return block + 1;
        if (!grow(size)) return nullptr;
    }
}

void free(void* address) {
    if (address) release(static_cast<Block*>(address) - 1);
}
