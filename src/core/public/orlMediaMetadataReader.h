// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_MEDIA_METADATA_READER_H
#define ORL_MEDIA_METADATA_READER_H

#include "orlBounds.h"
#include "orlExport.h"
#include "orlService.h"
#include "orlSharedPtr.h"
#include "orlStatus.h"
#include "orlString.h"
#include "orlTime.h"
#include "orlVector.h"

namespace ORL_0_81 {

/// The service that looks into media files, which this library cannot do itself.
///
/// Another library implements it, and registers it by constructing it: see Service. The library calls the one
/// operation below and nothing else of it.
class ORL_CORE_EXPORT MediaMetadataReader : public Service {
public:
    ~MediaMetadataReader() override;

    /// Describes one medium.
    ///
    /// Is called from many threads at once, without any lock, and in the "C" locale. May throw: the exception
    /// leaves the operation of MediaMetadata that asked.
    ///
    /// \param path A file path or a URL, just as the caller or the document has it.
    /// \param bounds Where the picture may lie: the reference that the bounds of the clip are relative to.
    /// \param time The time that was asked for. Its rate suits media that have none of their own.
    /// \param metadata Receives, on success, a timeline document that holds at least one clip. Of the first
    ///     clip count the available range, the bounds, the format of the media and the extra data. Extra data
    ///     of the name "Timecode/Start" says that the start of the available range is a timecode and can be
    ///     relied on.
    /// \returns kSuccess, or why there is no document. kErrorOpeningMediaFile makes
    ///     MediaMetadata::getMultipleMediaMetadata() pass over the medium in silence.
    virtual Status readMediaMetadata(String const& path, Bounds const& bounds, Time const& time,
                                     String& metadata) = 0;

protected:
    /// Registers this object as the process's reader.
    MediaMetadataReader();
};

/// The ways from media and timeline documents to complete and laid-out timeline documents, all of them
/// through the registered MediaMetadataReader.
///
/// **Documents** are texts in JSON: the timeline itself, or an object that holds it as "timeline". They end
/// at their first NUL, and must not be nested deeper than 1000 levels.
///
/// **The locale.** Each read sets the locale of the process to "C" for all categories, and it stays so.
///
/// **Failure.** Nothing here fails but as each operation tells; beyond that, `std::bad_alloc`, the
/// `std::system_error` of a thread that cannot be started, and whatever the reader throws leave the
/// operations as exceptions. The texts that are handed in for a result are then as they were, and no thread
/// is left behind.
///
/// **Thread safety.** All operations may be called from any number of threads at once, as long as no service
/// is made or destroyed meanwhile.
class ORL_CORE_EXPORT MediaMetadata {
public:
    /// How clips are placed on a canvas.
    enum LayoutType : int {
        kGrid = 0, ///< In rows of equal height that share the width evenly.
    };

    MediaMetadata() = delete;

    /// The registered reader.
    ///
    /// The registered type is trusted: whatever service was constructed as a kMediaMetadataReaderService is
    /// taken for a MediaMetadataReader.
    ///
    /// \returns a share of it, or null if there is none. Threads as Service::getService().
    static SharedPtr<MediaMetadataReader> getMediaMetadataReader();

    /// Lets the reader describe one medium. The reader is kept alive for as long.
    ///
    /// \param path, bounds, time, metadata As MediaMetadataReader::readMediaMetadata() wants them.
    /// \returns kUndefinedTime for an undefined time, with `metadata` as it was; else
    ///     kMediaReaderUnavailable if no reader is registered, with `metadata` as it was; else the reader's
    ///     own status.
    static Status getMediaMetadata(String const& path, Bounds const& bounds, Time const& time,
                                   String& metadata);

    /// Lets the reader describe many media, all of them at the same time: one thread for each path, whatever
    /// their number.
    ///
    /// A medium that fails with kErrorOpeningMediaFile is passed over. No failure keeps the others from being
    /// read.
    ///
    /// \param paths, bounds, time What the reader is asked for each path; every read has the same bounds and time.
    /// \param metadata The documents of all media that could be read are appended, in the order of `paths`,
    ///     also after a failure of others. So an element says nothing about its path once one has failed.
    /// \returns the first failure in the order of `paths` that is not kErrorOpeningMediaFile, as
    ///     getMediaMetadata() gives it; kSuccess if there is none.
    static Status getMultipleMediaMetadata(Vector<String> const& paths, Bounds const& bounds,
                                           Time const& time, Vector<String>& metadata);

    /// Completes a document whose clips name their media without describing them.
    ///
    /// Each clip's media are read, one thread for each clip, ten of them at a time. What a clip says of its
    /// ranges and bounds stands; what it leaves open comes from the first source that can be read: its target
    /// URL, its path to frames, its path to a movie, its uploaded movie. The description of the media (the
    /// resolution, the codecs and so on) comes from the target URL alone. The uploaded movie tells the
    /// length, but a start only if it carries a timecode.
    ///
    /// The timeline's own start stands. If it is open, it becomes that of the clip, if there is just one, and
    /// else `time`.
    ///
    /// A medium that cannot be read is no failure: its clip keeps what it has, and has `bounds` if it had
    /// none. So is a missing reader.
    ///
    /// \param document The timeline document.
    /// \param sanitized Receives the complete document in normal form, without a wrapper; "{}" for a document
    ///     without a usable timeline. Unchanged after a failure. May be `document` itself.
    /// \param bounds The reference bounds of every read, and the default of clips without any.
    /// \param time The time of every read, after the timeline's own start has replaced what it replaces. If
    ///     it is undefined, nothing can be read.
    /// \returns kSuccess; or kOTIOJsonReadError for a document that is empty or no JSON.
    static Status sanitizeOTIOMetadata(String const& document, String& sanitized, Bounds const& bounds,
                                       Time const& time);

    /// Makes one timeline of many: all their tracks in one stack, all their clips in cells of one canvas.
    ///
    /// The tracks stand in the order of the documents. The timeline starts where the first document does. The
    /// clips, audio clips as well, fill as many columns as rows, or one more; the last row shares the width
    /// among the clips that are left. A clip keeps the aspect of its old bounds, or is a square if it had
    /// none, and is centred in its cell. The first row has the smallest y.
    ///
    /// \param documents Timeline documents, which are used as they are: nothing is read from media.
    /// \param type Is not looked at.
    /// \param name The name of the new timeline.
    /// \param bounds The canvas.
    /// \param layout Receives the document in normal form. Unchanged after a failure.
    /// \returns kSuccess, for no documents at all, too; or kOTIOJsonReadError for one that is no JSON.
    static Status getLayoutFromOTIOs(Vector<String> const& documents, LayoutType type, String const& name,
                                     Bounds const& bounds, String& layout);

    /// The layout of what the reader says of each path.
    ///
    /// \param paths Are read by getMultipleMediaMetadata(), and not changed.
    /// \param type Must be kGrid.
    /// \param name, bounds, layout As for getLayoutFromOTIOs(), which goes on with the documents of the
    ///     reader; if there are none, `layout` becomes "{}".
    /// \param time As for getMediaMetadata().
    /// \returns kInvalidLayoutType for another type, before anything is read; else the failure of
    ///     getMultipleMediaMetadata(), or what getLayoutFromOTIOs() returns.
    static Status getLayoutFromFilepaths(Vector<String>& paths, LayoutType type, String const& name,
                                         Bounds const& bounds, Time const& time, String& layout);
};

} // namespace ORL_0_81

#endif // ORL_MEDIA_METADATA_READER_H
