// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FFMPEG_MEDIA_METADATA_READER_H
#define ORL_FFMPEG_MEDIA_METADATA_READER_H

#include <orlExport.h>
#include <orlMediaMetadataReader.h>

namespace ORL_0_81 {

/// The media metadata reader on top of FFmpeg. Constructing it registers it: see Service.
///
///     SharedPtr<FFmpegMediaMetadataReader> const reader(new FFmpegMediaMetadataReader);
///     String document;
///     Status const status = MediaMetadata::getMediaMetadata("shot.mov", canvas, time, document);
///
/// **What it reads.** A path; a file URL, with or without percent escapes; a sequence name such as
/// `shot.%04d.exr`, with or without a directory; and, once allowed, other URLs. A name that a file has means
/// that file and no sequence. Where nothing has the name, that counts which has a name that looks like it: accented
/// letters can be written as one character or as two, and other programs write them otherwise than the disk has
/// them. Only regular files and named pipes are opened, never devices or sockets.
///
/// **What a document holds.** One timeline, stack, track and clip, in the normal form of the library.
///
/// - The available range, in frames at the exact rate of the picture. It starts at the embedded timecode if
///   there is one, else at 0, and is as long as the frames that are really in the file, where the container
///   lists them. The source range is the same, and the timeline starts where it does.
/// - An image sequence starts at its first frame number and lasts until its last; missing frames in between
///   count. Images and sequences have no rate of their own, and take that of the time that is asked for, as
///   does the range of a medium that is sound alone; 24/1 if that has none. One image lasts one frame.
/// - A length that nobody can know, of a piped stream for example, is left undefined.
/// - The resolution is that of the stored picture in pixels. The data type is "uint8", "uint16" (also for 9
///   to 15 bits), "uint32", "half" or "float"; the number of channels counts alpha.
/// - The bounds are the largest rectangle of the picture's display aspect that fits into the reference
///   bounds, at their centre. Pixel aspect and rotation by quarter turns count. Reference bounds that are not
///   valid give a rectangle of height 1.0. Sound alone has the reference bounds.
/// - Codecs by their FFmpeg names, "Unknown" for what is not there. The size of the file in bytes, of the
///   first frame's for a sequence; beyond 2147483647 the document states it, but the library reads -1.
/// - The extra data: "Timecode/Start" with the embedded timecode, then the tags of the container.
///
/// What is first of its kind counts of several pictures and sounds, what is marked as default before others.
/// A cover picture is no picture.
///
/// **Failure.**
///
/// - kFileNotFound: no such file, no frame of such a sequence, an empty path; a playlist that leads to another
///   one that is not there.
/// - kIOAccess: no permission; a protocol that is not allowed, also where the medium leads to it; an error of
///   the device or the network; the time limit, spent on waiting.
/// - kUnsupportedFormat: nothing that FFmpeg knows, such as text; a format without picture and sound; a
///   sequence of movies.
/// - kUnsupportedCodec: a picture, or sound alone, that FFmpeg knows no decoder for.
/// - kVariableFps: frames that do not keep within half a period of any one rate. All frames are looked at
///   where the container lists them, else the first 128.
/// - kErrorOpeningMediaFile: a directory or a device; an empty, truncated or broken file without a usable
///   frame; the time limit, spent on work.
///
/// The document is left alone after a failure. Operations may throw `std::bad_alloc`.
///
/// **Thread safety.** readMediaMetadata() may be called from any number of threads; beyond 32 at a time they
/// wait for each other, so that thousands of calls do not run out of file handles. Each medium is worked on
/// by the thread that calls, and no other. The setters must not run while another thread uses the object.
///
/// **Cost.** A medium is opened once, or once for each file that it refers to. Of the pictures no more is
/// decoded than FFmpeg needs to know their format.
///
/// **FFmpeg's log** is silenced for the threads that are inside of readMediaMetadata(), by a log callback
/// that the first constructor installs and that hands on everything else to FFmpeg's default. An application
/// with a callback of its own sets it after that, and then receives all.
class ORL_CORE_EXPORT FFmpegMediaMetadataReader : public MediaMetadataReader {
public:
    /// Local files only, a limit of 10 seconds, no log.
    FFmpegMediaMetadataReader();

    FFmpegMediaMetadataReader(FFmpegMediaMetadataReader const&) = delete;
    FFmpegMediaMetadataReader& operator=(FFmpegMediaMetadataReader const&) = delete;

    ~FFmpegMediaMetadataReader() override;

    Status readMediaMetadata(String const& path, Bounds const& bounds, Time const& time,
                             String& metadata) override;

    /// @{
    /// The protocols that may be used beside local files, by FFmpeg's names with commas between them, such as
    /// "http,https,tcp,tls". Each protocol that another one stands on must be named, too. Empty at first.
    ///
    /// The same goes for what a medium refers to, such as the segments of a playlist. What was not read from
    /// a local file never leads to one.
    void setAllowedProtocols(String const& names);
    String getAllowedProtocols() const;
    /// @}

    /// @{
    /// The longest that one medium may take, in seconds: in time for what may keep a reader waiting, which is
    /// named pipes, URLs and playlists, and in work of the processor for all. 10 at first. Values that are
    /// not above 0 mean no time at all.
    ///
    /// A host name is looked up by the system, and a file on a network drive read by it; they take the time
    /// that they take. FFmpeg ends what it is at before it stops, which for a hostile file can be as long
    /// again.
    void setTimeLimit(double seconds);
    double getTimeLimit() const;
    /// @}

    /// @{
    /// Whether FFmpeg's log passes. False at first.
    void setLogging(bool enabled);
    bool isLogging() const;
    /// @}

private:
    class Imp;

    Imp* m_imp; // owned
};

} // namespace ORL_0_81

#endif // ORL_FFMPEG_MEDIA_METADATA_READER_H
