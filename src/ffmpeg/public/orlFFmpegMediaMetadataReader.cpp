// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlFFmpegMediaMetadataReader.h"

#include "internal/orlDisplayBounds.h"
#include "internal/orlFFmpegLog.h"
#include "internal/orlGate.h"
#include "internal/orlMediaDocument.h"
#include "internal/orlMediaReading.h"

#include <string>

namespace ORL_0_81 {

namespace {

constexpr int MEDIA_AT_A_TIME = 32;

std::string toStandard(String const& text) { return std::string(text.data(), text.size()); }

} // namespace

class FFmpegMediaMetadataReader::Imp {
public:
    media::ReadingOptions m_options;
    bool m_logging = false;
    media::Gate m_gate{MEDIA_AT_A_TIME};
};

FFmpegMediaMetadataReader::FFmpegMediaMetadataReader() : m_imp(new Imp) { media::LogSilence::install(); }

FFmpegMediaMetadataReader::~FFmpegMediaMetadataReader() {
    delete m_imp;
    m_imp = nullptr;
}

Status FFmpegMediaMetadataReader::readMediaMetadata(String const& path, Bounds const& bounds,
                                                    Time const& time, String& metadata) {
    media::Gate::Pass const pass(m_imp->m_gate);
    media::LogSilence const silence(!m_imp->m_logging);
    std::string const text = toStandard(path);
    media::MediaDescription description;
    Status const status = media::describeMedium(text, m_imp->m_options, time.getRate(), description);
    if (!status) {
        return status;
    }
    std::string const document =
        media::writeDocument(text, description, media::fitBounds(description.displayAspect, bounds));
    metadata = String(document.data(), document.size());
    return Status::kSuccess;
}

void FFmpegMediaMetadataReader::setAllowedProtocols(String const& names) {
    m_imp->m_options.allowed = media::ProtocolList(toStandard(names));
}

String FFmpegMediaMetadataReader::getAllowedProtocols() const {
    std::string const& names = m_imp->m_options.allowed.text();
    return String(names.data(), names.size());
}

void FFmpegMediaMetadataReader::setTimeLimit(double seconds) { m_imp->m_options.timeLimit = seconds; }

double FFmpegMediaMetadataReader::getTimeLimit() const { return m_imp->m_options.timeLimit; }

void FFmpegMediaMetadataReader::setLogging(bool enabled) { m_imp->m_logging = enabled; }

bool FFmpegMediaMetadataReader::isLogging() const { return m_imp->m_logging; }

} // namespace ORL_0_81
