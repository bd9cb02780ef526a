// Memory for the length of a call: taken in order and given back all at once, without touching the heap in the long
// run.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace qx::sheet {

class Arena {
  public:
    /// Gives back what was taken since it was made.
    class Scope {
      public:
        explicit Scope(Arena& arena) : arena_(arena), chunk_(arena.chunk_), used_(arena.used_) {}
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope() {
            arena_.chunk_ = chunk_;
            arena_.used_ = used_;
        }

      private:
        Arena& arena_;
        std::size_t chunk_, used_;
    };

    /// Room for `count` objects, not constructed.
    template <class T>
    T* take(std::size_t count) {
        static_assert(alignof(T) <= 8);
        const std::size_t size = count * sizeof(T); // NOLINT(bugprone-sizeof-expression): T may be a pointer
        return static_cast<T*>(bytes((size + 7) & ~std::size_t{7}));
    }

  private:
    struct Chunk {
        std::unique_ptr<std::byte[]> memory;
        std::size_t size;
    };

    void* bytes(std::size_t wanted) {
        if (chunk_ == chunks_.size() || chunks_[chunk_].size - used_ < wanted) [[unlikely]]
            make_room(wanted);
        void* const memory = chunks_[chunk_].memory.get() + used_;
        used_ += wanted;
        return memory;
    }
    [[gnu::noinline]] void make_room(std::size_t wanted) {
        while (chunk_ < chunks_.size() && chunks_[chunk_].size - used_ < wanted) {
            ++chunk_;
            used_ = 0;
        }
        if (chunk_ < chunks_.size()) return;
        const std::size_t size = wanted > chunk_size ? wanted : chunk_size;
        chunks_.push_back({std::make_unique_for_overwrite<std::byte[]>(size), size});
    }

    static constexpr std::size_t chunk_size = 1 << 16;
    std::vector<Chunk> chunks_;
    std::size_t chunk_ = 0, used_ = 0;
};

} // namespace qx::sheet
