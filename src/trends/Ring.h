// The last so many of what was added, oldest first. Its place is taken at once, its memory as it fills.
#pragma once

#include <cstddef>
#include <vector>

template <typename Item, std::size_t Limit>
class Ring {
public:
    Ring() { m_items.reserve(Limit); }

    void add(const Item& item) {
        if (m_items.size() < Limit) {
            m_items.push_back(item);
            return;
        }
        m_items[m_first] = item;
        m_first = (m_first + 1) % Limit;
    }

    std::size_t size() const { return m_items.size(); }
    bool isEmpty() const { return m_items.empty(); }
    // Preconditions: index < size(), not empty.
    const Item& operator[](std::size_t index) const { return m_items[place(index)]; }
    Item& last() { return m_items[place(size() - 1)]; }
    const Item& last() const { return m_items[place(size() - 1)]; }

private:
    std::size_t place(std::size_t index) const { return (m_first + index) % m_items.size(); }

    std::vector<Item> m_items;
    std::size_t m_first = 0;
};
