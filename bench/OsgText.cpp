// SPDX-License-Identifier: MIT
// OpenSceneGraph's Text3D: buffers or display lists of its own choice.
#include "bench/OtherTexts.h"

#include <osg/DisplaySettings>
#include <osg/GLExtensions>
#include <osg/Notify>
#include <osg/RenderInfo>
#include <osg/State>
#include <osgText/Font>
#include <osgText/Style>
#include <osgText/Text3D>

#include <sstream>

namespace
{
class OsgText : public OtherText
{
public:
    explicit OsgText(const TextJob& job)
        : view_(job.view),
          state_(new osg::State),
          font_(osgText::readRefFontFile(job.fontFile)),
          style_(new osgText::Style)
    {
        // Fonts keep buffers for each context, by this number.
        static unsigned contexts = 0;
        osg::DisplaySettings::instance()->setMaxNumberOfGraphicsContexts(contexts + 1);
        state_->setContextID(contexts++);
        osg::setNotifyLevel(osg::FATAL);  // it warns of each space, which has no outline
        state_->initializeExtensionProcs();
        info_.setState(state_.get());
        if (job.isBevelled)
        {
            osg::ref_ptr<osgText::Bevel> bevel = new osgText::Bevel;
            bevel->flatBevel(0.03f);
            bevel->setBevelThickness(0.03f);
            style_->setBevel(bevel);
        }
        OsgText::SetText(job.text);
    }

    void Draw() override
    {
        // It loads the matrices that it knows into OpenGL.
        const double nearest = view_.distance / 10;
        const double top = 0.45 * nearest;
        state_->applyProjectionMatrix(new osg::RefMatrix(osg::Matrix::frustum(
            -top * view_.aspect, top * view_.aspect, -top, top, nearest, 3 * view_.distance)));
        state_->applyModelViewMatrix(new osg::RefMatrix(
            osg::Matrix::translate(-view_.centerX, -view_.centerY, -view_.distance)));
        for (const Line& line : lines_)
        {
            line.drawn->draw(info_);
        }
        // The other drawings must not meet its buffers, and change them.
        state_->disableAllVertexArrays();
        state_->unbindVertexBufferObject();
        state_->unbindElementBufferObject();
        state_->dirtyAllVertexArrays();
    }

    /// Each line is a text of its own, because a text with 65,536 vertices or more is drawn wrong.
    void SetText(const std::string& text) override
    {
        std::istringstream in(text);
        std::size_t count = 0;
        for (std::string characters; std::getline(in, characters); ++count)
        {
            if (count == lines_.size())
            {
                lines_.push_back({"", new osgText::Text3D});
                osgText::Text3D& made = *lines_.back().drawn;
                made.setFont(font_);
                made.setCharacterSize(1);
                made.setCharacterDepth(1);
                made.setDrawMode(osgText::TextBase::TEXT);
                made.setRenderMode(osgText::Text3D::PER_GLYPH);
                made.setStyle(style_);
                made.setPosition(osg::Vec3(0, -static_cast<float>(count), 0));
            }
            if (lines_[count].characters != characters)
            {
                lines_[count].characters = characters;
                lines_[count].drawn->setText(characters);
            }
        }
        lines_.resize(count);
    }

private:
    struct Line
    {
        std::string characters;
        osg::ref_ptr<osgText::Text3D> drawn;
    };

    TextView view_;
    osg::ref_ptr<osg::State> state_;
    osg::RenderInfo info_;
    osg::ref_ptr<osgText::Font> font_;
    osg::ref_ptr<osgText::Style> style_;
    std::vector<Line> lines_;
};
}  // namespace

std::unique_ptr<OtherText> MakeOsgText(const TextJob& job)
{
    return std::make_unique<OsgText>(job);
}
