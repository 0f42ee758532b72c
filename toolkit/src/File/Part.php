<?php

declare(strict_types=1);

namespace Sepa\Toolkit\File;

/** One document: a file, what is packed in it, or a member of an archive. */
final class Part
{
    /** @var string the file's name; of a member with the archive's before it */
    public string $name;

    /** @var string what it is, of Kind */
    public string $kind;

    /** @var bool whether it stands in an archive or a folder, among others */
    public bool $isMember;

    public Trouble $trouble;

    private Chunks $chunks;

    public function __construct(string $name, Chunks $chunks, Trouble $trouble, bool $isMember = false)
    {
        $this->name = $name;
        $this->chunks = $chunks;
        $this->trouble = $trouble;
        $this->isMember = $isMember;
        $this->kind = Kind::of($chunks->head());
    }

    /** Its first kilobytes. */
    public function head(): string
    {
        return $this->chunks->head();
    }

    /** @return \Generator<string> once; none of them empty */
    public function chunks(): \Generator
    {
        return $this->chunks->all();
    }
}
