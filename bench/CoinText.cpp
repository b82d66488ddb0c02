// SPDX-License-Identifier: MIT
// Coin's SoText3 under a separator that keeps its OpenGL calls in a display list.
#include "bench/OtherTexts.h"
#include "platform/OpenGL.h"

#include <Inventor/SoDB.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLinearProfile.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoProfileCoordinate2.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoText3.h>

#include <cmath>
#include <sstream>

namespace
{
class CoinText : public OtherText
{
public:
    explicit CoinText(const TextJob& job)
    {
        [[maybe_unused]] static const bool isReady = [] {
            SoDB::init();
            return true;
        }();
        root_ = new SoSeparator;
        root_->ref();
        root_->renderCaching = SoSeparator::OFF;
        const TextView& view = job.view;
        auto* const camera = new SoPerspectiveCamera;
        camera->position.setValue(static_cast<float>(view.centerX),
                                  static_cast<float>(view.centerY),
                                  static_cast<float>(view.distance));
        camera->nearDistance = static_cast<float>(view.distance / 10);
        camera->farDistance = static_cast<float>(3 * view.distance);
        camera->heightAngle = static_cast<float>(2 * std::atan(0.45));
        root_->addChild(camera);
        root_->addChild(new SoDirectionalLight);
        auto* const cached = new SoSeparator;
        cached->renderCaching = SoSeparator::ON;
        cached->renderCulling = SoSeparator::OFF;
        root_->addChild(cached);
        auto* const hints = new SoShapeHints;
        hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
        hints->shapeType = SoShapeHints::SOLID;
        cached->addChild(hints);
        auto* const material = new SoMaterial;
        material->ambientColor.setValue(0.5f, 0.5f, 0.5f);
        material->diffuseColor.setValue(0.5f, 0.5f, 0.5f);
        material->specularColor.setValue(0.5f, 0.5f, 0.5f);
        material->shininess = 0.5f;
        cached->addChild(material);
        auto* const font = new SoFont;
        font->name = "DejaVu Sans";
        font->size = 1;
        cached->addChild(font);
        if (job.isBevelled)
        {
            const float points[][2] = {{0, 0}, {0.03f, 0.03f}, {0.97f, 0.03f}, {1, 0}};
            const std::int32_t indices[] = {0, 1, 2, 3};
            auto* const coordinates = new SoProfileCoordinate2;
            coordinates->point.setValues(0, 4, points);
            cached->addChild(coordinates);
            auto* const profile = new SoLinearProfile;
            profile->index.setValues(0, 4, indices);
            cached->addChild(profile);
        }
        text_ = new SoText3;
        text_->parts = SoText3::ALL;
        cached->addChild(text_);
        CoinText::SetText(job.text);
        GLint viewport[4];
        glGetIntegerv(GL_VIEWPORT, viewport);
        action_ = std::make_unique<SoGLRenderAction>(
            SbViewportRegion(static_cast<short>(viewport[2]), static_cast<short>(viewport[3])));
        // Display lists are kept for each context, by this number.
        static std::uint32_t contexts = 0;
        action_->setCacheContext(++contexts);
    }
    ~CoinText() override { root_->unref(); }

    void Draw() override
    {
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        action_->apply(root_);
        glPopAttrib();
    }

    void SetText(const std::string& text) override
    {
        std::vector<std::string> lines;
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);)
        {
            lines.push_back(line);
        }
        text_->string.setNum(static_cast<int>(lines.size()));
        for (std::size_t i = 0; i < lines.size(); ++i)
        {
            text_->string.set1Value(static_cast<int>(i), lines[i].c_str());
        }
    }

private:
    SoSeparator* root_;
    SoText3* text_;
    std::unique_ptr<SoGLRenderAction> action_;
};
}  // namespace

std::unique_ptr<OtherText> MakeCoinText(const TextJob& job)
{
    return std::make_unique<CoinText>(job);
}
