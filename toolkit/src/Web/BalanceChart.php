<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Statement\Amount;

/** The running balance as steps, one for each booking. */
final class BalanceChart
{
    private const WIDTH = 1000;

    private const HEIGHT = 300;

    /** More steps than these are drawn as their lowest and highest. */
    private const MAX_STEPS = 400;

    private const MAX_LINES = 6;

    /** Within what an integer can hold. */
    private const MAX_UNITS = 9.2e18;

    private string $currency;

    /** @var list<int> */
    private array $balances;

    /** @param int $opening in the smallest unit, as all balances */
    public function __construct(string $currency, int $opening)
    {
        $this->currency = $currency;
        $this->balances = [$opening];
    }

    public function add(int $balance): void
    {
        $this->balances[] = $balance;
    }

    /**
     * What its template draws; null if there is nothing to see. Balances are
     * amounts, places are those of the picture.
     *
     * @return array<string, mixed>|null
     */
    public function picture(): ?array
    {
        if (count($this->balances) < 3) {
            return null;
        }
        $lines = $this->lines();
        $high = $lines[0];
        $low = end($lines);
        $y = static function (float $units) use ($high, $low): float {
            return round(max(0, min(1, ($high - $units) / ($high - $low))) * self::HEIGHT, 1);
        };
        $path = $this->path($y);
        $of = fn (int $units): Amount => new Amount($units, $this->currency);

        return [
            'width' => self::WIDTH,
            'height' => self::HEIGHT,
            'currency' => $this->currency,
            'bookings' => count($this->balances) - 1,
            'lines' => array_map(static fn (int $units): array => ['amount' => $of($units), 'y' => $y($units)], $lines),
            'line' => $path,
            // Only from zero does an area tell how much there is.
            'area' => $low <= 0 && $high >= 0 ? "{$path}V{$y(0)}H0Z" : null,
            'opening' => $of($this->balances[0]),
            'closing' => $of(end($this->balances)),
            'lowest' => $of(min($this->balances)),
            'highest' => $of(max($this->balances)),
        ];
    }

    /** @param callable(float): float $y */
    private function path(callable $y): string
    {
        $steps = count($this->balances) - 1;
        $each = (int) ceil(count($this->balances) / self::MAX_STEPS);
        $path = 'M0 ' . $y($this->balances[0]);
        for ($at = 1; $at <= $steps; $at += $each) {
            $bucket = array_slice($this->balances, $at, $each);
            $path .= 'H' . round(($at - 0.5) / $steps * self::WIDTH, 1);
            foreach ($each === 1 ? $bucket : [min($bucket), max($bucket), end($bucket)] as $balance) {
                $path .= 'V' . $y($balance);
            }
        }

        return $path . 'H' . self::WIDTH;
    }

    /**
     * Round balances around all of them, from the highest down, at even distances.
     *
     * @return list<int>
     */
    private function lines(): array
    {
        $high = max($this->balances);
        $low = min($this->balances);
        // With zero in sight, heights tell how much there is.
        if ($low > 0 && $low < 0.7 * $high) {
            $low = 0;
        } elseif ($high < 0 && $high > 0.7 * $low) {
            $high = 0;
        }
        $range = max($high - $low, abs($high) / 10, 10);
        $power = 10 ** floor(log10($range / self::MAX_LINES));
        foreach ([1, 2, 5, 10, 20] as $times) {
            $step = $times * $power;
            $bottom = floor($low / $step);
            $top = max(ceil($high / $step), $bottom + 1);
            if ($top - $bottom < self::MAX_LINES) {
                break;
            }
        }
        $lines = [];
        for ($i = $top; $i >= $bottom; --$i) {
            $lines[] = (int) max(-self::MAX_UNITS, min(self::MAX_UNITS, $i * $step));
        }

        return $lines;
    }
}
