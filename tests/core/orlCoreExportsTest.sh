#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
#
# orlCoreExportsTest.sh LIBRARY: every symbol that the shared library exports belongs to ORL_0_81, none to its
# hidden parts, and what applications need is among them.
set -euo pipefail
library=$1
exports=$(nm --dynamic --defined-only --demangle "$library" | cut -d' ' -f3-)
failed=0

# By mangled names: a demangled one may begin with a function's result.
foreign=$(nm --dynamic --defined-only "$library" | cut -d' ' -f3- |
    grep -vE '^_Z(T[CISTV]|GV|T[hvc].*_)?Z?NK?8ORL_0_81' | c++filt || true)
if [ -n "$foreign" ]; then
    printf 'Not of ORL_0_81:\n%s\n' "$foreign"
    failed=1
fi

hidden=$(grep -E '::Impl?(::|$)|rapidotio|rapidjson|PtrInternal|printDebug|parseJson|JobQueue|Semaphore|Async|normalizeToNfd|FrameNotation|GuardedRegex|LocaleGuard|placeInGrid' <<<"$exports" || true)
if [ -n "$hidden" ]; then
    printf 'Exported, but internal:\n%s\n' "$hidden"
    failed=1
fi

# A container over a hidden type would be hidden, too.
containers=(
    'List<int>' 'List<double>' 'List<ORL_0_81::String>' 'List<ORL_0_81::NameDescriptionStruct>'
    'List<ORL_0_81::SharedPtr<ORL_0_81::Token> >' 'List<ORL_0_81::SharedPtr<ORL_0_81::ExternalSegment> >'
    'Vector<double>' 'Vector<long long>' 'Vector<ORL_0_81::String>' 'Vector<ORL_0_81::NameValueStruct>'
    'Vector<ORL_0_81::SharedPtr<ORL_0_81::Annotation::Layer> >' 'Vector<ORL_0_81::Annotation::Paint::Point>'
    'Vector<ORL_0_81::CacheStats::FrameRange>')

for name in 'ORL_0_81::Status::getStr() const' 'ORL_0_81::String::substr(' 'typeinfo for ORL_0_81::RefCountedMT' \
    "${containers[@]/%/::erase(}" "${containers[@]/%/::Iterator::operator*() const}" \
    'ORL_0_81::Prefs::RECORDER_MAX_PIXEL_COUNT' 'ORL_0_81::Service::getService(' \
    'ORL_0_81::Annotation::Paint::clone() const' 'ORL_0_81::URLHandler::ResolvedUrl::~ResolvedUrl()' \
    'typeinfo for ORL_0_81::TokenProducer::ChangeHint' 'typeinfo for ORL_0_81::InvalidationHint' \
    'typeinfo for ORL_0_81::AudioProviderInterface::FillAudioBufferHint' \
    'vtable for ORL_0_81::JobDispatcher' 'typeinfo for ORL_0_81::JobDispatcher::JobBase' \
    'ORL_0_81::TokenResolver::create(char, char)' \
    'ORL_0_81::FileSequenceUtils::getSequencesInFileList(' \
    'ORL_0_81::MediaMetadata::sanitizeOTIOMetadata(' 'vtable for ORL_0_81::MediaMetadataReader' \
    'vtable for ORL_0_81::Encrypter' 'vtable for ORL_0_81::VideoBuffer'; do
    if ! grep -qF "$name" <<<"$exports"; then
        printf 'Missing: %s\n' "$name"
        failed=1
    fi
done
exit "$failed"
