#pragma once

namespace kova::detail {

class Attribute;
class Node;

// Marks a pull of `attribute` on `node` through a connection as in progress for its lifetime,
// for KSourceReadProbe.
class SourceRead {
public:
    SourceRead(const Node& node, const Attribute& attribute);
    ~SourceRead();
    SourceRead(const SourceRead&) = delete;
    SourceRead& operator=(const SourceRead&) = delete;

private:
    const void* key_ = nullptr;
    const void* attribute_ = nullptr;
};

} // namespace kova::detail
