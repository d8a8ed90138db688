// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlJobQueue.h"

#include <algorithm>
#include <limits>

namespace ORL_0_81 {

namespace {

constexpr int NO_PREREQUISITE = JobDispatcher::JobBase::kNoPrerequisite;
constexpr long long BEFORE_ALL = std::numeric_limits<long long>::min();

// The way to a node without a map to keep it in.
template <class Map, class... Arguments>
typename Map::node_type makeNode(Arguments&&... arguments) {
    Map map;
    return map.extract(map.try_emplace(std::forward<Arguments>(arguments)...).first);
}

} // namespace

// The place of the job with the id, or the end.
template <class SomeLine>
auto JobQueue::inLine(SomeLine& line, int id) noexcept {
    auto const place = std::lower_bound(line.begin(), line.end(), id,
                                        [](InLine const& one, int wanted) { return one.id < wanted; });
    return place != line.end() && place->id == id && place->job ? place : line.end();
}

void JobQueue::add(Job const& job) {
    int const id = job->getId();
    int const prerequisite = job->getPrerequisiteId();
    // Asked before the job is here. Only those who depend on something want to know.
    bool const isFirst = !m_dependents.empty() && !holds(id);

    if (prerequisite == NO_PREREQUISITE && (m_line.empty() || m_line.back().id < id)) {
        m_line.push_back({job, id, m_tail + 1});
        ++m_tail;
    } else {
        Entries::node_type node = makeEntry(job);
        Entry& entry = node.mapped();
        bool const isBlocked = prerequisite != NO_PREREQUISITE && (prerequisite == id || holds(prerequisite));
        insertEntry(std::move(node), ++m_tail);
        if (!isBlocked) {
            admit(entry);
        }
    }
    if (isFirst) {
        blockDependents(id);
    }
}

JobQueue::Job JobQueue::take() noexcept {
    bool const lineIsFirst =
        !m_line.empty() && (m_ready.empty() || m_line.front().position < m_ready.begin()->first);
    if (!lineIsFirst && m_ready.empty()) {
        return nullptr;
    }
    Job job;
    if (lineIsFirst) {
        job = leave(m_line.front());
    } else {
        Entry const& entry = *m_ready.begin()->second;
        job = leave(m_entries.find({entry.job->getId(), entry.position}));
    }
    m_running.push_back(job->getId()); // there is room
    return job;
}

void JobQueue::finish(int id) noexcept {
    auto const place = std::find(m_running.begin(), m_running.end(), id);
    *place = m_running.back();
    m_running.pop_back();
    admitDependents(id);
}

JobQueue::Job JobQueue::remove(int id) noexcept {
    auto const line = inLine(m_line, id);
    auto const entry = firstEntry(id);
    Job job;
    if (line != m_line.end() && (entry == m_entries.end() || line->position < entry->second.position)) {
        job = leave(*line);
    } else if (entry != m_entries.end()) {
        job = leave(entry);
    } else {
        return nullptr;
    }
    admitDependents(id);
    return job;
}

void JobQueue::prioritize(int id) {
    auto const line = inLine(m_line, id);
    auto const found = firstEntry(id);
    if (line != m_line.end() && (found == m_entries.end() || line->position < found->second.position)) {
        Entries::node_type node = makeEntry(line->job);
        Entry& entry = node.mapped();
        leave(*line);
        insertEntry(std::move(node), --m_head);
        admit(entry);
    } else if (found != m_entries.end()) {
        Entry& entry = found->second;
        bool const isReady = !entry.readyNode;
        block(entry);
        Entries::node_type node = m_entries.extract(found);
        entry.position = --m_head;
        node.key().second = entry.position;
        m_entries.insert(std::move(node));
        if (isReady) {
            admit(entry);
        }
    }
}

bool JobQueue::holds(int id) const noexcept {
    auto const entry = m_entries.lower_bound({id, BEFORE_ALL});
    if (entry != m_entries.end() && entry->first.first == id) {
        return true;
    }
    return inLine(m_line, id) != m_line.end() ||
           std::find(m_running.begin(), m_running.end(), id) != m_running.end();
}

JobQueue::Entries::node_type JobQueue::makeEntry(Job const& job) {
    Entries::node_type node = makeNode<Entries>(Key(job->getId(), 0));
    Entry& entry = node.mapped();
    entry.job = job;
    entry.readyNode = makeNode<Ready>(0, &entry);
    if (job->getPrerequisiteId() != NO_PREREQUISITE) {
        entry.dependentNode = makeNode<Dependents>(Key(job->getPrerequisiteId(), 0), &entry);
    }
    return node;
}

// Gives the entry its position. It is blocked at first.
void JobQueue::insertEntry(Entries::node_type node, long long position) noexcept {
    Entry& entry = node.mapped();
    entry.position = entry.arrival = position;
    node.key().second = position;
    m_entries.insert(m_entries.end(), std::move(node)); // most ids are the highest yet
    if (entry.dependentNode) {
        entry.dependentNode.key().second = entry.arrival;
        m_dependents.insert(std::move(entry.dependentNode));
    }
}

JobQueue::Job JobQueue::leave(InLine& place) noexcept {
    Job job = std::move(place.job);
    ++m_gaps;
    for (; !m_line.empty() && !m_line.front().job; --m_gaps) {
        m_line.pop_front();
    }
    for (; !m_line.empty() && !m_line.back().job; --m_gaps) {
        m_line.pop_back();
    }
    if (m_gaps > m_line.size() / 2) {
        m_line.erase(std::remove_if(m_line.begin(), m_line.end(), [](InLine const& one) { return !one.job; }),
                     m_line.end());
        m_gaps = 0;
    }
    return job;
}

JobQueue::Job JobQueue::leave(Entries::iterator place) noexcept {
    Entry& entry = place->second;
    block(entry);
    if (entry.job->getPrerequisiteId() != NO_PREREQUISITE) {
        m_dependents.erase({entry.job->getPrerequisiteId(), entry.arrival});
    }
    Job job = std::move(entry.job);
    m_entries.erase(place);
    return job;
}

JobQueue::Entries::iterator JobQueue::firstEntry(int id) noexcept {
    auto const place = m_entries.lower_bound({id, BEFORE_ALL});
    return place != m_entries.end() && place->first.first == id ? place : m_entries.end();
}

void JobQueue::admit(Entry& entry) noexcept {
    if (entry.readyNode) {
        entry.readyNode.key() = entry.position;
        m_ready.insert(m_ready.end(), std::move(entry.readyNode)); // most come from the tail
    }
}

void JobQueue::block(Entry& entry) noexcept {
    if (!entry.readyNode) {
        entry.readyNode = m_ready.extract(entry.position);
    }
}

void JobQueue::blockDependents(int id) noexcept {
    for (auto place = m_dependents.lower_bound({id, BEFORE_ALL});
         place != m_dependents.end() && place->first.first == id; ++place) {
        block(*place->second);
    }
}

// A job with the id has gone; unless there is another, those that waited for it may run.
void JobQueue::admitDependents(int id) noexcept {
    if (m_dependents.empty() || holds(id)) {
        return;
    }
    for (auto place = m_dependents.lower_bound({id, BEFORE_ALL});
         place != m_dependents.end() && place->first.first == id; ++place) {
        admit(*place->second);
    }
}

} // namespace ORL_0_81
