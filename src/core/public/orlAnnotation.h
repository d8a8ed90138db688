// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_ANNOTATION_H
#define ORL_ANNOTATION_H

#include "orlExport.h"
#include "orlRefCounted.h"
#include "orlSharedPtr.h"
#include "orlString.h"
#include "orlTime.h"
#include "orlVector.h"

namespace ORL_0_81 {

/// What a reviewer draws on a picture: a list of layers, each a set of painted points or a text.
///
/// A model in memory and no more: nothing is drawn, read or written here, and no value is checked.
///
/// An Annotation is a value, but its layers are shared objects: a copy has a list of its own, of the same
/// layers.
///
/// **Failure.** What allocates may throw `std::bad_alloc`; constructors and create() do, and whatever copies
/// the vectors of layers or points.
///
/// **Thread safety.** No locks: an annotation or a layer has one writer or many readers at a time. The counts
/// of the layers are thread-safe.
class ORL_CORE_EXPORT Annotation {
public:
    /// What all layers have in common: when and how they show. Held through SharedPtr.
    class ORL_CORE_EXPORT Layer : public RefCountedMT {
    public:
        /// The frames on which a layer shows.
        struct ORL_CORE_EXPORT FrameRange {
            Time start; ///< The first one.
            Time end;   ///< The last one.
        };

        /// Red, green, blue and opacity. By default opaque black.
        struct ORL_CORE_EXPORT Color {
            float r = 0.0F; ///< Red.
            float g = 0.0F; ///< Green.
            float b = 0.0F; ///< Blue.
            float a = 1.0F; ///< Opacity: 1 is opaque.
        };

        /// Two default times, opaque black, no ghost, ghosts of 3 frames before and after, not held, visible.
        Layer();

        /// The rest as by default.
        Layer(FrameRange const& range, Color const& color, bool visible);

        /// Copies all that is told here, unlike the copies of Paint and Text. The new object's count is 0.
        Layer(Layer const& other);

        ~Layer() override;

        /// There is none: those of Paint and Text leave what is told here as it is.
        Layer& operator=(Layer const& other) = delete;

        /// @{
        /// The frames on which the layer shows. The reference is to the object's own field.
        FrameRange const& getRange() const;
        void setRange(FrameRange const& range);
        /// @}

        /// @{
        /// What the layer is drawn with. The reference is to the object's own field.
        Color const& getColor() const;
        void setColor(Color const& color);
        /// @}

        /// @{
        /// Whether the layer shows faintly on the frames around its range.
        bool isGhost() const;
        void setGhost(bool ghost);
        /// @}

        /// @{
        /// On how many frames after its range.
        unsigned int getGhostAfter() const;
        void setGhostAfter(unsigned int ghostAfter);
        /// @}

        /// @{
        /// On how many frames before its range.
        unsigned int getGhostBefore() const;
        void setGhostBefore(unsigned int ghostBefore);
        /// @}

        /// @{
        /// Whether the layer stays until the next one shows.
        bool isHold() const;
        void setHold(bool hold);
        /// @}

        /// @{
        /// Whether the layer shows at all.
        bool isVisible() const;
        void setVisible(bool visible);
        /// @}

    private:
        class Imp;

        Imp* m_imp; // owned
    };

    /// Points that a brush has painted.
    ///
    /// **Copies.** The copy constructor, and clone() with it, takes over points, type and brush only: the
    /// copy has the default range, colour, ghosts, hold and visibility, whatever the source had. The
    /// assignment leaves those of its target as they were. Whoever wants a full copy sets them again.
    class ORL_CORE_EXPORT Paint : public Layer {
    public:
        /// One point, and how wide the brush was there. Nothing here interprets it.
        struct ORL_CORE_EXPORT Point {
            double x = 0.0;     ///< From left to right.
            double y = 0.0;     ///< From bottom to top, or the other way: as it was written.
            double width = 0.0; ///< Of the brush.
        };

        /// What the points make. This library gives no meaning to any value; 0 is the default.
        enum Type : int {};

        /// What they are painted with. This library gives no meaning to any value; 0 is the default.
        enum Brush : int {};

        /// A new object as the default constructor makes it, never null.
        static SharedPtr<Paint> create();

        /// A new object of the given values, never null.
        static SharedPtr<Paint> create(FrameRange const& range, Color const& color, bool visible,
                                       Vector<Point> const& points, Type type, Brush brush);

        /// A new object as the copy constructor makes it, never null.
        SharedPtr<Paint> clone() const;

        /// A default Layer without points, of type and brush 0.
        Paint();

        /// A default Layer but for these values, which are kept as copies.
        Paint(FrameRange const& range, Color const& color, bool visible, Vector<Point> const& points,
              Type type, Brush brush);

        /// Copies points, type and brush: see above.
        Paint(Paint const& other);

        ~Paint() override;

        /// Copies points, type and brush: see above. Self-assignment does nothing.
        Paint& operator=(Paint const& other);

        /// @{
        /// The object's own vector. Points are added and removed through it.
        Vector<Point>& getPoints();
        Vector<Point> const& getPoints() const;
        /// @}

        /// @{
        /// Kept as they are given.
        Type getType() const;
        void setType(Type type);
        Brush getBrush() const;
        void setBrush(Brush brush);
        /// @}

    private:
        class Imp;

        Imp* m_imp; // owned
    };

    /// A text on the picture.
    ///
    /// **Copies.** The copy constructor, and clone() with it, takes over what is told here only: the copy has
    /// the default range, colour, ghosts, hold and visibility, whatever the source had. The assignment leaves
    /// those of its target as they were. Whoever wants a full copy sets them again.
    class ORL_CORE_EXPORT Text : public Layer {
    public:
        /// Where the text stands, in the units of whoever draws.
        struct ORL_CORE_EXPORT Position {
            double x = 0.0; ///< Across.
            double y = 0.0; ///< Up or down.
        };

        /// What the text is set in.
        struct ORL_CORE_EXPORT Font {
            String name;       ///< As the system that draws knows it.
            double size = 0.0; ///< In the units of whoever draws.
        };

        /// How lines are set. This library gives no meaning to any value; 0 is the default.
        enum Justification : int {};

        /// A new object as the default constructor makes it, never null.
        static SharedPtr<Text> create();

        /// A new object of the given values, never null.
        static SharedPtr<Text> create(FrameRange const& range, Color const& color, bool visible,
                                      String const& text, Position const& position,
                                      Justification justification, Font const& font, double width,
                                      double orientation);

        /// A new object as the copy constructor makes it, never null.
        SharedPtr<Text> clone() const;

        /// A default Layer with an empty text; all else is 0 or empty.
        Text();

        /// A default Layer but for these values, which are kept as copies.
        Text(FrameRange const& range, Color const& color, bool visible, String const& text,
             Position const& position, Justification justification, Font const& font, double width,
             double orientation);

        /// Copies what is told here: see above.
        Text(Text const& other);

        ~Text() override;

        /// Copies what is told here: see above. Self-assignment does nothing.
        Text& operator=(Text const& other);

        /// \name Values
        /// @{

        /// References are to the object's own fields. Units are those of whoever draws.
        String const& getText() const;
        void setText(String const& text);

        Position const& getPosition() const;
        void setPosition(Position const& position);

        Justification getJustification() const;
        void setJustification(Justification justification);

        Font const& getFont() const;
        void setFont(Font const& font);

        double getWidth() const;
        void setWidth(double width);

        double getOrientation() const;
        void setOrientation(double orientation);

        /// @}

    private:
        class Imp;

        Imp* m_imp; // owned
    };

    /// Visible, without layers.
    Annotation();

    /// Shares the other's layers, in a vector of its own.
    Annotation(Annotation const& other);

    ~Annotation();

    /// Shares the other's layers, in its own vector. Self-assignment does nothing.
    Annotation& operator=(Annotation const& other);

    /// @{
    /// The object's own vector. Layers are added and removed through it.
    Vector<SharedPtr<Layer>>& getLayers();
    Vector<SharedPtr<Layer>> const& getLayers() const;
    /// @}

    /// @{
    /// Whether it is to be shown at all.
    bool isVisible() const;
    void setVisible(bool visible);
    /// @}

private:
    class Imp;

    Imp* m_imp; // owned
};

} // namespace ORL_0_81

#endif // ORL_ANNOTATION_H
