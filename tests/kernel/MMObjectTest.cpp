#include "kernel/MMObject.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace tamor
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> destroyed;

/// An object that tells of its end, and may hold another.
class Noted : public MMObject
{
public:
    explicit Noted(std::string newName) : name(std::move(newName)) {}
    ~Noted() override { destroyed.push_back(name); }

    ObjectRef<MMObject> other;

private:
    std::string name;
};

class MMObjectTest : public testing::Test
{
protected:
    MMObjectTest() { destroyed.clear(); }
    ~MMObjectTest() override
    {
        collectAll();
        // The sweep ends a process, and this one goes on to further tests.
        shuttingDown = false;
    }
};

TEST_F(MMObjectTest, ANewObjectIsAliveUncountedAndLastInTheList)
{
    auto* const first = new Noted("first");
    auto* const second = new Noted("second");

    EXPECT_THAT(liveObjects, ElementsAre(first, second));
    EXPECT_EQ(first->refCount, 0);
}

TEST_F(MMObjectTest, DroppingTheLastReferenceDestroysNothing)
{
    auto* const object = new Noted("object");
    {
        const ObjectRef<MMObject> reference(object);
        EXPECT_EQ(object->refCount, 1);
    }
    EXPECT_EQ(object->refCount, 0);
    EXPECT_THAT(destroyed, IsEmpty());

    collectUnreferenced();

    EXPECT_THAT(destroyed, ElementsAre("object"));
    EXPECT_THAT(liveObjects, IsEmpty());
}

TEST_F(MMObjectTest, AnObjectThatNobodyEverHeldGoesWithTheFirstSweep)
{
    new Noted("object");

    collectUnreferenced();

    EXPECT_THAT(destroyed, ElementsAre("object"));
}

TEST_F(MMObjectTest, ANegativeCountIsUnreferenced)
{
    (new Noted("object"))->refCount = -1;

    collectUnreferenced();

    EXPECT_THAT(destroyed, ElementsAre("object"));
}

TEST_F(MMObjectTest, ASweepTakesWhatItFreesFurtherOnButNotFurtherBack)
{
    auto* const back = new Noted("back");
    auto* const holder = new Noted("holder");
    auto* const on = new Noted("on");
    auto* const secondHolder = new Noted("second holder");
    holder->other = on;
    secondHolder->other = back;

    collectUnreferenced();

    EXPECT_THAT(destroyed, ElementsAre("holder", "on", "second holder"));
    EXPECT_THAT(liveObjects, ElementsAre(back));
    EXPECT_EQ(back->refCount, 0);
}

TEST_F(MMObjectTest, ASweepTakesAnObjectThatIsEnteredTwiceOnce)
{
    liveObjects.push_back(new Noted("first"));
    new Noted("second");

    collectUnreferenced();

    EXPECT_THAT(destroyed, ElementsAre("first", "second"));
    EXPECT_THAT(liveObjects, IsEmpty());
}

TEST_F(MMObjectTest, ObjectsThatHoldEachOtherStayUntilAllAreCollected)
{
    auto* const first = new Noted("first");
    auto* const second = new Noted("second");
    first->other = second;
    second->other = first;

    collectUnreferenced();
    EXPECT_THAT(destroyed, IsEmpty());

    collectAll();
    EXPECT_THAT(destroyed, ElementsAre("first", "second"));
    EXPECT_THAT(liveObjects, IsEmpty());
    EXPECT_TRUE(shuttingDown);
}

TEST_F(MMObjectTest, ReferencesMayOutliveTheirObjects)
{
    ObjectRef<MMObject> reference(new Noted("object"));
    collectAll();

    const ObjectRef<MMObject> copy(reference);
    reference = nullptr;

    EXPECT_TRUE(reference.isEmpty());
}

TEST_F(MMObjectTest, ASweepWithoutObjectsDoesNothing)
{
    collectUnreferenced();
    collectAll();

    EXPECT_THAT(destroyed, IsEmpty());
}

using ObjectRefTest = MMObjectTest;

TEST_F(ObjectRefTest, IsAsLargeAsAPointer)
{
    EXPECT_EQ(sizeof(ObjectRef<Noted>), sizeof(void*));
}

TEST_F(ObjectRefTest, StartsEmpty)
{
    const ObjectRef<Noted> reference;
    const ObjectRef<Noted> ofNull(nullptr);

    EXPECT_TRUE(reference.isEmpty());
    EXPECT_EQ(reference.get(), nullptr);
    EXPECT_TRUE(ofNull.isEmpty());
}

TEST_F(ObjectRefTest, CopiesCountOnceEach)
{
    auto* const object = new Noted("object");
    const ObjectRef<Noted> first(object);
    ObjectRef<Noted> second(first);

    EXPECT_EQ(object->refCount, 2);
    EXPECT_EQ(second.get(), object);
    EXPECT_TRUE(first == second);

    second = nullptr;
    EXPECT_EQ(object->refCount, 1);
    EXPECT_FALSE(first == second);
}

TEST_F(ObjectRefTest, AssignmentMovesTheCount)
{
    auto* const a = new Noted("a");
    auto* const b = new Noted("b");
    ObjectRef<Noted> reference(a);

    reference = b;
    EXPECT_EQ(a->refCount, 0);
    EXPECT_EQ(b->refCount, 1);

    reference = ObjectRef<Noted>(a);
    EXPECT_EQ(a->refCount, 1);
    EXPECT_EQ(b->refCount, 0);

    reference = nullptr;
    EXPECT_EQ(a->refCount, 0);
}

TEST_F(ObjectRefTest, AssignmentToItselfLeavesTheCount)
{
    auto* const object = new Noted("object");
    ObjectRef<Noted> reference(object);
    const ObjectRef<Noted>& same = reference;

    reference = same;

    EXPECT_EQ(object->refCount, 1);
    EXPECT_EQ(reference.get(), object);
}

TEST_F(ObjectRefTest, YieldsItsObject)
{
    auto* const object = new Noted("object");
    const ObjectRef<Noted> reference(object);

    EXPECT_EQ(&*reference, object);
    EXPECT_EQ(reference->refCount, 1);
}
} // namespace
} // namespace tamor
