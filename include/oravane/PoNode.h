#ifndef ORAVANE_PONODE_H
#define ORAVANE_PONODE_H

#include <oravane/OravaneApi.h>

#include <Inventor/nodes/SoNode.h>
#include <Inventor/nodes/SoSubNode.h>

class SoGroup;

/// Root of the attribute nodes: nodes that own a basic object (a domain, a data mapping, a list of isovalues)
/// and put it into the traversal state for the kits that follow. A child gives `doAction`, which every action
/// calls.
///
/// Fields of an attribute node reach its basic object when the node is next used, not when they are set.
///
/// Files: written with its fields while `PoBase::getNodeWriteFormat()` is `WRITE_FIELDS`. Under `WRITE_PARTS`
/// an attribute node is left out, since kits then write their finished geometry; a binary file, whose groups
/// count their children, gets an empty group in its place.
class ORAVANE_API PoNode : public SoNode {
    SO_NODE_HEADER(PoNode);

public:
    /// Registers `PoNode` and all attribute nodes.
    static void initClasses();
    static void initClass();

    void callback(SoCallbackAction *action) override;
    void GLRender(SoGLRenderAction *action) override;
    void getBoundingBox(SoGetBoundingBoxAction *action) override;
    void getMatrix(SoGetMatrixAction *action) override;
    void handleEvent(SoHandleEventAction *action) override;
    void pick(SoPickAction *action) override;
    void search(SoSearchAction *action) override;
    void write(SoWriteAction *action) override;
    void addWriteReference(SoOutput *out, SbBool isFromField = FALSE) override;

protected:
    PoNode();
    ~PoNode() override;
    SbBool readInstance(SoInput *in, unsigned short flags) override;

private:
    SoGroup *standIn();

    SoGroup *m_standIn = nullptr;
};

#endif
