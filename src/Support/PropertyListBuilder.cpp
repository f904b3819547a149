#include "PropertyListBuilder.h"
#include <utility>

namespace quillane::PropertyList::Detail {

bool Builder::countNodes(std::size_t count) {
    if (count > m_limits.nodes - m_nodes) {
        return false;
    }
    m_nodes += count;
    return true;
}

bool Builder::countPayload(std::size_t bytes) {
    if (bytes > m_limits.payload - m_payload) {
        return false;
    }
    m_payload += bytes;
    return true;
}

bool Builder::key(std::string key) {
    if (!inDictionary() || m_frames.back().key || !countPayload(key.size())) {
        return false;
    }
    m_frames.back().key = std::move(key);
    return true;
}

bool Builder::add(Value::Variant leaf) {
    return place(Value(std::move(leaf)));
}

bool Builder::addString(std::string text) {
    return countPayload(text.size()) && place(Value(std::move(text)));
}

bool Builder::addData(std::string bytes) {
    return countPayload(bytes.size()) && place(Value(Data{std::move(bytes)}));
}

bool Builder::open(Kind kind, std::size_t expected) {
    // What is expected counts before room is made for it: a chain of containers that each promise much and
    // hold little must not take much.
    if (m_frames.size() >= m_limits.depth || !countNodes(expected)) {
        return false;
    }
    auto& frame = m_frames.emplace_back(Frame{kind, {}, {}, std::nullopt, expected});
    if (kind == Kind::dictionary) {
        frame.entries.reserve(expected);
    } else if (kind == Kind::array) {
        frame.values.reserve(expected);
    }
    return true;
}

bool Builder::close() {
    if (m_frames.empty() || m_frames.back().key) {
        return false;
    }
    Frame frame = std::move(m_frames.back());
    m_frames.pop_back();
    switch (frame.kind) {
    case Kind::array:
        return place(Value(std::move(frame.values)));
    case Kind::dictionary:
        return place(Value(Dictionary(std::move(frame.entries))));
    case Kind::opaque:
        return place(Value(Opaque{}));
    }
    return false;
}

bool Builder::place(Value value) {
    if (m_frames.empty()) {
        if (m_root || !countNodes(1)) {
            return false;
        }
        m_root = std::move(value);
        return true;
    }
    Frame& frame = m_frames.back();
    if (frame.counted > 0) {
        --frame.counted;
    } else if (!countNodes(1)) {
        return false;
    }
    switch (frame.kind) {
    case Kind::array:
        frame.values.push_back(std::move(value));
        return true;
    case Kind::dictionary:
        if (!frame.key) {
            return false;
        }
        frame.entries.push_back({std::move(*frame.key), std::move(value)});
        frame.key.reset();
        return true;
    case Kind::opaque:
        return true;
    }
    return false;
}

std::optional<Value> Builder::take() {
    if (!m_frames.empty()) {
        return std::nullopt;
    }
    return std::exchange(m_root, std::nullopt);
}

} // namespace quillane::PropertyList::Detail
