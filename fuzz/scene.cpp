// SPDX-License-Identifier: MIT
// Any bytes as a document: a scene and a view in one archive, measured, and stored again.
#include "orvane.h"

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    CMemFile file(bytes, static_cast<UINT>(count));
    CArchive archive(&file, CArchive::load | CArchive::bNoFlushOnDelete);
    try
    {
        const std::unique_ptr<CObject> scene(archive.ReadNewObject(RUNTIME_CLASS(SceneObject)));
        const std::unique_ptr<CObject> view(archive.ReadNewObject(RUNTIME_CLASS(ViewObject)));
        auto& camera = static_cast<ViewObject&>(*view);
        camera.AttachScene(static_cast<SceneObject*>(scene.get()));
        camera.ZoomExtents();

        CMemFile copy;
        CArchive stored(&copy, CArchive::store);
        stored.WriteObject(scene.get());
        stored.WriteObject(view.get());
        stored.Close();
    }
    catch (const CException&)
    {}
    return 0;
}
